#include "platform/dao/alone.h"

#include "platform/dao/engine.h"

namespace tolvek {

Alone::Alone(TextView path, With with)
    : hold_(Engine::instance().hold(absoluteOf(path), with == With::Database))
{
}

void Alone::confirm() const
{
    hold_->confirm();
}

void Alone::end() const
{
    hold_->end();
}

void putAllAtRest()
{
    try {
        Engine::instance().restAll();
    } catch (const RuntimeError&) {
        // The box comes all the same, or nobody would hear of the failure that it
        // is about. Committed rows are whole in the file or in its log.
    }
}

}
