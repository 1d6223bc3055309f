#include "platform/dao/dao.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"

#include <limits>

namespace tolvek {

Value::Value(Text text) : kind_(Kind::Characters), text_(std::move(text)) {}

Value::Value(std::int64_t number, DataType type) : kind_(Kind::Number), number_(number), type_(type)
{
}

bool Value::isNull() const
{
    return kind_ == Kind::Null;
}

Text Value::text() const
{
    if (isNull()) throw RuntimeError(94);
    if (kind_ == Kind::Characters) return text_;
    if (type_ == dbBoolean) return number_ != 0 ? u"True" : u"False";
    return decimal(number_);
}

Int16 Value::int16() const
{
    const std::int32_t number = int32();
    return Int16(number); // checks the range
}

std::int32_t Value::int32() const
{
    if (isNull()) throw RuntimeError(94);
    if (kind_ == Kind::Characters) return toInt32(text_);
    if (number_ < std::numeric_limits<std::int32_t>::min() ||
        number_ > std::numeric_limits<std::int32_t>::max())
        throw RuntimeError(6);
    return static_cast<std::int32_t>(number_);
}

bool Value::boolean() const
{
    if (isNull()) throw RuntimeError(94);
    if (kind_ == Kind::Number) return number_ != 0;
    const Text word = lowerCase(text_);
    if (word == u"true" || word == u"false") return word == u"true";
    return toDouble(text_) != 0;
}

}
