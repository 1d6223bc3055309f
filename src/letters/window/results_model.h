// The letters found, as rows of date, person, subject and the line that matched.
//
// A row's texts are made when it is shown, so that a search with very many results costs
// no more than one with few.
#pragma once
#include "letters/desk.h"

#include <QAbstractTableModel>
#include <QCache>

namespace tolvek {

class ResultsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Date, Person, Subject, Line, kColumns };
    // std::vector<Span>: the hits in the cell's text.
    static constexpr int kMarksRole = Qt::UserRole;

    explicit ResultsModel(QObject* parent = nullptr);

    void show(std::shared_ptr<const Answer> answer);
    const std::shared_ptr<const Answer>& answer() const { return answer_; }

    LetterId letterAt(int row) const { return answer_->results.letters.at(std::size_t(row)); }
    // -1 if the letter isn't among the results.
    int rowOf(LetterId letter) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Cell {
        QString text;
        std::vector<Span> marks;
    };
    struct Row {
        Cell cells[kColumns];
        QString spoken;
    };
    const Row& row(int number) const;
    Row madeRow(LetterId id) const;

    std::shared_ptr<const Answer> answer_;
    mutable QCache<int, Row> rows_;
};

}
