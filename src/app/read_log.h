// The account of a read: for each mail box, what became of every mail that it held.
// The program appends one record for each read to TolvekRead.log; the last 100 stay.
//
// The file is UTF-8 with CR LF, meant for people first:
//
//     ■ 2000/02/15 10:11:12
//     ● 受信フォルダ/受信メール.ppm
//       箱のメール: 3
//       新しく保存: 1
//       保存済み: 1
//       日付なし: 1
//         - From: hana@example.jp
//           Subject: こんにちは
//       合計: 3（一致）
//
// Lines of a count of 0 are left out, but for the first three. Every line taken from a
// mail is indented by four blanks or more, so none can look like the log's own.
#pragma once
#include "platform/runtime/text.h"

#include <filesystem>
#include <vector>

namespace tolvek {

// Things of one kind: how many, and what identifies each. Beyond a thousand of a read
// they are only counted.
struct LeftThings {
    int count = 0;
    std::vector<Text> names; // a mail's first header lines, separated by LF
};

struct KeptOut {
    Text rule;
    int mails = 0;
    bool operator==(const KeptOut&) const = default;
};

struct BoxRecord {
    Text box;       // its folder and mail file
    Text failure;   // why it couldn't be read; empty if it was
    int held = 0;   // mails, by the converter's count
    int stored = 0; // new ones
    int known = 0;  // stored by an earlier read, or twice in this one
    std::vector<KeptOut> keptOut;
    LeftThings noDate, noText;
    LeftThings failed;  // an error was shown
    LeftThings growing; // the last mail of a box that grew; left for the next read
    int unread = 0;     // the read ended before them
    LeftThings files;   // of a folder of messages, unreadable; not among the mails

    bool isMissing() const; // there was no such box

    int accounted() const; // mails whose fate is known
    bool addsUp() const { return accounted() == held; }
};

struct ReadRecord {
    Text time; // "yyyy/mm/dd hh:mm:ss"
    std::vector<BoxRecord> boxes;
};

Text readLogText(const ReadRecord& record);

// The records of a log, the oldest first. Lines of an unknown form are skipped.
std::vector<ReadRecord> parseReadLog(TextView log);

// Appends the record and drops the oldest ones beyond 100. The file is replaced as a
// whole, so an interruption leaves the old one. Throws std::system_error.
void appendToReadLog(const std::filesystem::path& file, const ReadRecord& record);

inline constexpr TextView kNoSuchBox = u"箱がありません"; // in BoxRecord::failure

}
