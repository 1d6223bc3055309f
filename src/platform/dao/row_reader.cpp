#include "platform/dao/row_reader.h"

#include "platform/dao/column_rules.h"
#include "platform/dao/dao_errors.h"
#include "platform/dao/schema_check.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"

#include <limits>

namespace tolvek {

namespace {

using Clock = std::chrono::steady_clock;

std::optional<FileStamp> stampOf(const std::filesystem::path& path)
{
    if (!fileExists(path)) return std::nullopt;
    return asFileError([&] { return fileStamp(path); });
}

struct Stamps {
    explicit Stamps(const std::filesystem::path& path)
        : file(stampOf(path)), log(stampOf(path.string() + "-wal")),
          journal(stampOf(path.string() + "-journal"))
    {
    }
    bool operator==(const Stamps&) const = default;
    std::optional<FileStamp> file, log, journal;
};

Text selectFrom(TextView table, const std::vector<Text>& columns)
{
    Text sql = u"SELECT rowid";
    for (const Text& column : columns)
        sql += u", " + quotedName(column);
    return sql + u" FROM " + quotedName(table) + u" WHERE rowid > ?1 ORDER BY rowid";
}

}

RowReader::RowReader(std::filesystem::path path)
    : path_(std::move(path)), connection_(Connection::openToRead(path_))
{
    if (!connection_) {
        openCopy();
        return;
    }
    requireArchive(*connection_, 3343);
    version_ = connection_->version();
    connection_->endReading();
}

RowReader::~RowReader()
{
    connection_.reset();
    copy_.drop();
}

// The copy is made without a lock, so it counts only if nobody wrote meanwhile.
void RowReader::openCopy()
{
    const Stamps before(path_);
    connection_ = copy_.of(path_);
    isCopy_ = true;
    if (before != Stamps(path_)) throw lockedError(pathText(path_));
    if (const auto original = Connection::openToRead(path_)) original->endReading();
}

// Between two stretches a program that waits for the file gets it.
void RowReader::inStretch(const std::function<void()>& work)
{
    if (isCopy_) return work();
    connection_->beginReading();
    try {
        if (connection_->version() != version_) throw lockedError(pathText(path_));
        work();
    } catch (...) {
        connection_->endReading();
        throw;
    }
    connection_->endReading();
}

bool RowReader::hasColumn(TextView table, TextView column)
{
    bool has = false;
    inStretch([&] { has = connection_->table(table).position(column) >= 0; });
    return has;
}

RowReader::Place RowReader::readSome(const Text& sql, Place after, const Take& take)
{
    const auto query = connection_->query(TextView(sql));
    query->bind(1, after.value_or(std::numeric_limits<std::int64_t>::min()));
    const Clock::time_point end = Clock::now() + stretch_;
    while (query->step()) {
        take(*query);
        if (Clock::now() >= end) return query->number(0);
    }
    return std::nullopt;
}

bool RowReader::eachRow(TextView table, const std::vector<Text>& columns, const Take& take,
                        const Pause& pause)
{
    const Text sql = selectFrom(table, columns);
    Place last;
    do {
        if (last && pause && !pause()) return false;
        inStretch([&] { last = readSome(sql, last, take); });
    } while (last);
    return true;
}

}
