#include "letters/window/people_model.h"

#include "letters/window/letter_texts.h"
#include "platform/forms/qt_text.h"

#include <algorithm>
#include <numeric>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

void PeopleModel::show(std::shared_ptr<const Answer> answer, std::optional<PersonId> chosen)
{
    beginResetModel();
    answer_ = std::move(answer);
    people_ = answer_->results.people;
    all_ = std::accumulate(
        people_.begin(), people_.end(), std::size_t(0),
        [](std::size_t sum, const PersonCount& each) { return sum + each.letters; });
    if (chosen && std::ranges::find(people_, *chosen, &PersonCount::person) == people_.end())
        people_.push_back({*chosen, 0});
    endResetModel();
}

std::optional<PersonId> PeopleModel::personAt(int row) const
{
    if (row < 1 || row > static_cast<int>(people_.size())) return std::nullopt;
    return people_[static_cast<std::size_t>(row) - 1].person;
}

int PeopleModel::rowOf(std::optional<PersonId> person) const
{
    if (!person) return 0;
    const auto place = std::ranges::find(people_, *person, &PersonCount::person);
    return place == people_.end() ? 0 : static_cast<int>(place - people_.begin()) + 1;
}

int PeopleModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(people_.size()) + 1;
}

int PeopleModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QString PeopleModel::nameAt(int row) const
{
    const auto person = personAt(row);
    return person ? toQt(answer_->library->people().at(*person).name) : u"すべての相手"_s;
}

QVariant PeopleModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const auto person = personAt(index.row());
    const std::size_t count =
        person ? people_[static_cast<std::size_t>(index.row()) - 1].letters : all_;
    if (role == Qt::DisplayRole)
        return index.column() == 0 ? nameAt(index.row()) : countText(count);
    if (role == Qt::TextAlignmentRole && index.column() == 1)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::AccessibleTextRole)
        return nameAt(index.row()) + u"、"_s + countText(count) + u" 通"_s;
    if (role == Qt::ToolTipRole && person) {
        QStringList addresses;
        for (const Text& address : answer_->library->people().at(*person).addresses)
            addresses.push_back(toQt(address).toHtmlEscaped());
        return u"<qt>"_s + addresses.join(u"<br>"_s); // marked as rich: escaped above
    }
    return {};
}

}
