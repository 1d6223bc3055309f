#include "platform/dao/statement.h"

namespace tolvek {

Text Statement::text() const
{
    Text whole;
    for (const Part& part : parts_)
        whole += part.text;
    return whole;
}

}
