// A list of texts in which at most one entry is selected.
//
// Click fires once for each press of the left button on an entry (also on the
// selected one), for each key that moves the selection, and when code sets
// ListIndex; never for Clear or a refill. The user can't clear the selection. A
// press below the last entry does nothing, except that on an empty list Click fires
// with ListIndex -1. The right button doesn't change the selection and only reports
// its position; so do the menu key and Shift+F10, with the position below the selected
// entry.
//
// Designed for tens of thousands of rows: all rows have the same height, and an
// entry stores only its text.
#pragma once
#include "platform/forms/control.h"

#include <QAbstractListModel>
#include <QListView>

#include <vector>

namespace tolvek {

// The texts of the list. Each is painted on one line, with a blank for each line end.
class ListBoxModel : public QAbstractListModel {
    Q_OBJECT
public:
    using QAbstractListModel::QAbstractListModel;

    int count() const { return static_cast<int>(entries_.size()); }
    const Text& at(int index) const { return entries_[static_cast<std::size_t>(index)]; }
    void clear();
    void append(TextView text);
    void replace(int index, TextView text);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<Text> entries_;
};

class ListBox : public ControlOf<QListView> {
    Q_OBJECT
public:
    ListBox(Container container, TextView name);

    void Clear();
    int ListCount() const;
    const tolvek::Text& List(int index) const; // error 9 if outside
    void setList(int index, TextView text);    // appends at ListCount; error 5 beyond
    void AddItem(TextView text) { setList(ListCount(), text); }
    int ListIndex() const { return listIndex_; }
    // selects and fires Click; -1 clears without Click; outside: error 380
    void setListIndex(int index);
    tolvek::Text Text() const; // of the selected entry, or empty
    int SelCount() const { return listIndex_ < 0 ? 0 : 1; }

signals:
    void Click();
    void RightButton(const QPoint& pos); // in pixels of the list

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void select(int index);
    int rowForKey(int key) const;
    QPoint menuPosition() const;
    void searchByKey(QKeyEvent* event);

    ListBoxModel* model_;
    int listIndex_ = -1;
};

}
