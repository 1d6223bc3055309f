// The error for an unknown name or position in a collection.
#pragma once
#include "platform/runtime/runtime_error.h"

namespace tolvek {

inline RuntimeError noSuchItem()
{
    return RuntimeError(3265, u"このコレクションには項目がありません。", nullptr);
}

}
