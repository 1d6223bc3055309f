// Reads whole tables of a file that another program may be using at the same time.
//
// Nothing is written to the file or beside it, and no journal is played in. The file is
// locked for reading in short stretches only, so a program that wants to write it waits
// for a moment at most. A Jet file, or one that a killed program left with a journal, is
// read from a private copy.
//
// Errors: 3356 while another program writes the file, or when one has written it since
// the reader was made: make another reader then. Otherwise as DBEngine::OpenDatabase.
#pragma once
#include "platform/dao/jet_copy.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace tolvek {

class RowReader {
public:
    explicit RowReader(std::filesystem::path path);
    ~RowReader();
    RowReader(const RowReader&) = delete;
    RowReader& operator=(const RowReader&) = delete;

    bool hasColumn(TextView table, TextView column);
    // Calls `take` for each row in the order of their numbers. Column 0 of the query is
    // the row's number, then come `columns`. Between two stretches `pause` is called; the
    // reading ends if it returns false. False if it ended so.
    using Take = std::function<void(const Query& row)>;
    using Pause = std::function<bool()>;
    bool eachRow(TextView table, const std::vector<Text>& columns, const Take& take,
                 const Pause& pause = {});
    // How long a writer waits at most; it gives up after Connection::patience().
    void setStretch(std::chrono::milliseconds stretch) { stretch_ = stretch; }

private:
    void openCopy();
    void inStretch(const std::function<void()>& work);
    using Place = std::optional<std::int64_t>; // the row read last; none at the end
    Place readSome(const Text& sql, Place after, const Take& take);

    std::filesystem::path path_;
    JetCopy copy_;
    std::shared_ptr<Connection> connection_;
    bool isCopy_ = false;
    Text version_;
    std::chrono::milliseconds stretch_{50};
};

}
