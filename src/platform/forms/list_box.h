// A list of texts of which one or none is selected.
//
// Click fires once for each press of the left button on an entry (the selected
// one too), for each key that moves the selection, and when code sets
// ListIndex; never for Clear or a refill. Nothing the user does takes a
// selection away. A press below the last entry does nothing, except that on an
// empty list Click fires with ListIndex -1. The right button leaves the
// selection alone and only tells where it was pressed.
//
// Made for tens of thousands of rows: all rows are of one height, and an entry
// costs its text alone.
#pragma once
#include "platform/forms/control.h"

#include <QListView>
#include <QPointer>

namespace tolvek {

class ListBoxModel;

class ListBox : public ControlOf<QListView> {
    Q_OBJECT
public:
    ListBox(Container container, TextView name);

    void Clear();
    int ListCount() const;
    const tolvek::Text& List(int index) const; // outside: error 9
    void setList(int index, TextView text);    // at ListCount it appends; beyond: error 5
    void AddItem(TextView text) { setList(ListCount(), text); }
    int ListIndex() const { return listIndex_; }
    void setListIndex(int index); // selects, fires Click; outside: error 380. -1: none, no Click
    tolvek::Text Text() const;    // of the selected entry, or ""
    int SelCount() const { return listIndex_ < 0 ? 0 : 1; }

    // Enter fires EnterKey here instead of pressing the form's default button.
    void setTakesEnter(bool takes) { takesEnter_ = takes; }

signals:
    void Click();
    void DblClick(); // behind the second Click
    void EnterKey();
    void RightButton(const QPoint& pos); // in the list's own pixels

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void select(int index);
    int rowForKey(int key) const;
    void searchByKey(QKeyEvent* event);

    ListBoxModel* model_;
    int listIndex_ = -1;
    bool takesEnter_ = false;
};

}
