#include "platform/dao/alone.h"

#include "platform/dao/engine.h"

namespace tolvek {

Alone::Alone(TextView path, With with)
    : name_(absoluteOf(path)), hold_(Engine::instance().hold(name_, with == With::Database))
{
}

void Alone::confirm() const
{
    hold_->confirm();
}

void Alone::end() const
{
    hold_->end(name_);
}

void putAllAtRest()
{
    try {
        Engine::instance().restAll();
    } catch (const RuntimeError&) {
        // The caller is about to show a box, which must appear in any case: it may report
        // an earlier failure. Committed rows are safe in the file or in its log.
    }
}

}
