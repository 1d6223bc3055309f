#include "app/read_log.h"

#include "platform/system/files.h"

#include <numeric>

namespace tolvek {

namespace {

constexpr std::size_t kMostRecords = 100;
constexpr TextView kRecordMark = u"■ ";
constexpr TextView kBoxMark = u"● ";
constexpr TextView kFailure = u"読めません";
constexpr TextView kRule = u"条件で除外";
constexpr TextView kSum = u"合計";
constexpr TextView kIndent = u"  ";
constexpr TextView kFirst = u"    - ";
constexpr TextView kFurther = u"      ";

// In the order of the log.
struct PlainCount {
    TextView label;
    int BoxRecord::*count;
    bool always;
};
constexpr PlainCount kPlainCounts[] = {
    {u"箱のメール", &BoxRecord::held, true},
    {u"新しく保存", &BoxRecord::stored, true},
    {u"保存済み", &BoxRecord::known, true},
    {u"途中で終わり未読", &BoxRecord::unread, false},
};

struct NamedCount {
    TextView label;
    LeftThings BoxRecord::*things;
};
constexpr NamedCount kNamedCounts[] = {
    {u"日付なし", &BoxRecord::noDate},           {u"本文なし", &BoxRecord::noText},
    {u"エラーで保存できず", &BoxRecord::failed}, {u"書き込み中で次回に", &BoxRecord::growing},
    {u"読めないファイル", &BoxRecord::files},
};

int keptOutMails(const BoxRecord& box)
{
    return std::accumulate(box.keptOut.begin(), box.keptOut.end(), 0,
                           [](int sum, const KeptOut& each) { return sum + each.mails; });
}

Text lineOf(TextView label, TextView value)
{
    return Text(kIndent) + Text(label) + u": " + Text(value) + Text(kCrLf);
}

// Control characters would break the line, and with it the log's form.
Text oneLine(TextView text)
{
    Text line(text);
    for (char16_t& c : line)
        if (c < u' ' || c == 0x85 || c == 0x2028 || c == 0x2029) c = u' ';
    return line;
}

Text indented(TextView lines)
{
    Text text;
    TextView indent = kFirst;
    for (;;) {
        const std::size_t end = lines.find(u'\n');
        text += Text(indent) + oneLine(lines.substr(0, end)) + Text(kCrLf);
        if (end == TextView::npos) return text;
        lines.remove_prefix(end + 1);
        indent = kFurther;
    }
}

Text keptOutText(const BoxRecord& box)
{
    Text text;
    if (box.keptOut.empty()) return text;
    text = lineOf(kRule, decimal(keptOutMails(box)));
    for (const KeptOut& each : box.keptOut)
        text += indented(oneLine(each.rule) + u": " + decimal(each.mails));
    return text;
}

Text namedText(TextView label, const LeftThings& things)
{
    Text text;
    if (things.count == 0) return text;
    text = lineOf(label, decimal(things.count));
    for (const Text& name : things.names)
        text += indented(name);
    return text;
}

Text sumText(const BoxRecord& box)
{
    const int sum = box.accounted();
    if (box.addsUp()) return lineOf(kSum, decimal(sum) + u"（一致）");
    return lineOf(kSum,
                  decimal(sum) + u"（一致しません。箱のメールは " + decimal(box.held) + u"）");
}

Text boxText(const BoxRecord& box)
{
    Text text = Text(kBoxMark) + oneLine(box.box) + Text(kCrLf);
    if (!box.failure.empty()) text += lineOf(kFailure, oneLine(box.failure));
    if (!box.failure.empty() && box.held == 0 && box.accounted() == 0) return text;
    for (const PlainCount& each : kPlainCounts)
        if (each.always || box.*each.count != 0)
            text += lineOf(each.label, decimal(box.*each.count));
    text += keptOutText(box);
    for (const NamedCount& each : kNamedCounts)
        text += namedText(each.label, box.*each.things);
    return text + sumText(box);
}

// Returns 0 for anything that is no number, as a user may have edited the file.
int numberOf(TextView text)
{
    long long value = 0;
    for (const char16_t c : text) {
        if (c < u'0' || c > u'9' || value > 100'000'000) break;
        value = value * 10 + (c - u'0');
    }
    return static_cast<int>(value);
}

class LogParser {
public:
    void take(TextView line)
    {
        if (line.starts_with(kRecordMark))
            beginRecord(line.substr(kRecordMark.size()));
        else if (line.starts_with(kBoxMark) && !records_.empty())
            beginBox(line.substr(kBoxMark.size()));
        else if (box_ != nullptr)
            takeBoxLine(line);
    }

    std::vector<ReadRecord> records() { return std::move(records_); }

private:
    void beginRecord(TextView time)
    {
        records_.push_back({Text(time), {}});
        box_ = nullptr;
        things_ = nullptr;
        inRules_ = false;
    }

    void beginBox(TextView name)
    {
        box_ = &records_.back().boxes.emplace_back();
        box_->box = name;
        things_ = nullptr;
        inRules_ = false;
    }

    void takeBoxLine(TextView line)
    {
        if (line.starts_with(kFirst))
            takeName(line.substr(kFirst.size()));
        else if (line.starts_with(kFurther))
            takeFurther(line.substr(kFurther.size()));
        else if (line.starts_with(kIndent))
            takeLabel(line.substr(kIndent.size()));
    }

    void takeName(TextView name)
    {
        if (inRules_) return takeRule(name);
        if (things_ != nullptr) things_->names.emplace_back(name);
    }

    void takeFurther(TextView line)
    {
        if (things_ != nullptr && !things_->names.empty())
            things_->names.back() += u"\n" + Text(line);
    }

    void takeRule(TextView text)
    {
        const std::size_t end = text.rfind(u": ");
        if (end == TextView::npos) return;
        box_->keptOut.push_back({Text(text.substr(0, end)), numberOf(text.substr(end + 2))});
    }

    void takeLabel(TextView line)
    {
        things_ = nullptr;
        const std::size_t end = line.find(u": ");
        if (end == TextView::npos) return;
        const TextView label = line.substr(0, end);
        const TextView value = line.substr(end + 2);
        inRules_ = label == kRule;
        if (label == kFailure) box_->failure = value;
        for (const PlainCount& each : kPlainCounts)
            if (label == each.label) box_->*each.count = numberOf(value);
        for (const NamedCount& each : kNamedCounts)
            if (label == each.label) beginThings(box_->*each.things, value);
    }

    void beginThings(LeftThings& things, TextView count)
    {
        things.count = numberOf(count);
        things_ = &things;
    }

    std::vector<ReadRecord> records_;
    BoxRecord* box_ = nullptr;     // of the last record
    LeftThings* things_ = nullptr; // of that box, whose names follow
    bool inRules_ = false;
};

// Where each record begins.
std::vector<std::size_t> recordStarts(std::string_view log)
{
    const std::string mark = toUtf8(kRecordMark);
    std::vector<std::size_t> starts;
    for (std::size_t at = 0; (at = log.find(mark, at)) != std::string_view::npos; ++at)
        if (at == 0 || log[at - 1] == '\n') starts.push_back(at);
    return starts;
}

// As bytes: what a later version writes, or a user, stays as it is.
std::string_view withoutOldest(std::string_view log, std::size_t kept)
{
    const std::vector<std::size_t> starts = recordStarts(log);
    return starts.size() <= kept ? log : log.substr(starts[starts.size() - kept]);
}

}

bool BoxRecord::isMissing() const
{
    return failure.find(kNoSuchBox) != Text::npos;
}

int BoxRecord::accounted() const
{
    return stored + known + keptOutMails(*this) + noDate.count + noText.count + failed.count +
           growing.count + unread;
}

Text readLogText(const ReadRecord& record)
{
    Text text = Text(kRecordMark) + record.time + Text(kCrLf);
    for (const BoxRecord& box : record.boxes)
        text += boxText(box);
    return text + Text(kCrLf);
}

std::vector<ReadRecord> parseReadLog(TextView log)
{
    LogParser parser;
    while (!log.empty()) {
        const std::size_t end = log.find(u'\n');
        TextView line = log.substr(0, end);
        if (line.ends_with(u'\r')) line.remove_suffix(1);
        parser.take(line);
        log.remove_prefix(end == TextView::npos ? log.size() : end + 1);
    }
    return parser.records();
}

void appendToReadLog(const std::filesystem::path& file, const ReadRecord& record)
{
    const std::string old = fileExists(file) ? readFile(file) : std::string();
    std::string log(withoutOldest(old, kMostRecords - 1));
    if (!log.empty() && !log.ends_with('\n')) log += "\r\n";
    replaceContents(file, log + toUtf8(readLogText(record)));
}

}
