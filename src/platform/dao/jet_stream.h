// Parses the reader's stream (jet_reader/stream_format.h) as it arrives.
//
// The reader works on an untrusted file and may have been taken over by it, so the
// stream isn't trusted either. BadJet is thrown if the stream breaks the grammar or
// carries more than a file of that size can hold.
#pragma once
#include "platform/dao/dao.h"
#include "platform/dao/jet_reader/stream_format.h"

#include <cstdint>
#include <exception>
#include <string>
#include <variant>
#include <vector>

namespace tolvek {

class BadJet : public std::exception {
public:
    const char* what() const noexcept override { return "damaged Jet file"; }
};

struct JetColumn {
    Text name;
    DataType type;
    int size; // characters, dbText only
};
using JetValue = std::variant<std::monostate, std::int64_t, Text>; // monostate is Null

class JetReceiver {
public:
    virtual ~JetReceiver() = default;
    virtual void table(const Text& name, const std::vector<JetColumn>& columns) = 0;
    virtual void row(const std::vector<JetValue>& values) = 0; // of the last table
    virtual void end() = 0;
};

class JetStream {
public:
    JetStream(JetReceiver& receiver, std::uintmax_t fileSize);
    void take(std::string_view bytes);
    // Whether the reader may have touched the file. A failure before that isn't caused by
    // the file.
    bool hasBegun() const { return state_ != State::Silent; }
    bool isWhole() const { return state_ == State::Ended && pending_.empty(); }

private:
    enum class State { Silent, Begun, Columns, Rows, Ended };
    std::size_t takeItem(std::string_view bytes);
    void item(jet::Item kind, std::string_view bytes);
    void begin(std::string_view greeting);
    void newTable(Text name);
    void addColumn(std::string_view bytes);
    void announceTable();
    void addValue(JetValue value);
    void finish();
    void requireRowEnd() const;

    JetReceiver& receiver_;
    std::uintmax_t bytesLeft_, itemsLeft_;
    State state_ = State::Silent;
    std::string pending_;
    Text name_;
    std::vector<JetColumn> columns_;
    std::vector<JetValue> row_;
};

}
