#include "letters/window/results_model.h"

#include "letters/window/letter_texts.h"
#include "platform/forms/qt_text.h"

#include <algorithm>
#include <functional>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kRowsKept = 500;

const QString kTitles[] = {u"日付"_s, u"相手"_s, u"件名"_s, u"本文"_s};

}

ResultsModel::ResultsModel(QObject* parent)
    : QAbstractTableModel(parent), answer_(std::make_shared<Answer>()), rows_(kRowsKept)
{
}

void ResultsModel::show(std::shared_ptr<const Answer> answer)
{
    beginResetModel();
    answer_ = std::move(answer);
    rows_.clear();
    endResetModel();
}

// Newest first means ascending numbers.
int ResultsModel::rowOf(LetterId letter) const
{
    const auto& letters = answer_->results.letters;
    const auto place = std::lower_bound(letters.begin(), letters.end(), letter);
    if (place == letters.end() || *place != letter) return -1;
    return static_cast<int>(place - letters.begin());
}

int ResultsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(answer_->results.letters.size());
}

int ResultsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

const ResultsModel::Row& ResultsModel::row(int number) const
{
    if (Row* const known = rows_.object(number)) return *known;
    auto* const made = new Row(madeRow(letterAt(number)));
    rows_.insert(number, made);
    return *made;
}

ResultsModel::Row ResultsModel::madeRow(LetterId id) const
{
    const Library& library = *answer_->library;
    const Letter letter = library.letter(id);
    const LetterQuery& query = answer_->query;
    Row row;
    row.cells[Date].text = shortDate(letter);
    const Text name = library.people().at(letter.person).name;
    // An arrow of a fixed width keeps received and sent names aligned.
    const Text prefix = letter.sent ? u"→ " : u"← ";
    row.cells[Person].text = toQt(prefix + name);
    row.cells[Person].marks =
        hitsIn(prefix + name, query, letter.sent ? TermField::To : TermField::From);
    row.cells[Subject].text = subjectText(letter);
    row.cells[Subject].marks = hitsIn(fromQt(row.cells[Subject].text), query);
    MatchedLine line = matchedLine(letter.text, query);
    row.cells[Line] = {paintedText(line.line, u' '), std::move(line.marks)};
    row.spoken = (letter.sent ? u"出した手紙、"_s : u"受け取った手紙、"_s) + longDate(letter) +
                 u"、"_s + toQt(name) + u"、"_s + subjectText(letter);
    return row;
}

QVariant ResultsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const Row& shown = row(index.row());
    const Cell& cell = shown.cells[index.column()];
    if (role == Qt::DisplayRole) return cell.text;
    if (role == kMarksRole) return QVariant::fromValue(cell.marks);
    if (role == Qt::AccessibleTextRole && index.column() == Date) return shown.spoken;
    // A subject that looks like markup must not become markup.
    if (role == Qt::ToolTipRole && index.column() != Line)
        return u"<qt>"_s + cell.text.toHtmlEscaped();
    return {};
}

QVariant ResultsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) return kTitles[section];
    return {};
}

}
