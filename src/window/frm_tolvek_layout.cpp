// The main window's layout rule. All numbers are twips in single precision. Nothing is
// rounded between the steps, and each step reads what the earlier ones have set, so
// their order matters.
#include "app/guard.h"
#include "app/state.h"
#include "window/frm_tolvek.h"

namespace tolvek {

namespace {

constexpr float kLeastHeight = 7404;
constexpr float kLeastWidth = 11745;

void layRows(frmTolvek& f, const ResumeNext& on)
{
    on([&] {
        if (f.Height() < kLeastHeight) f.setHeight(kLeastHeight);
    });
    on([&] { f.lstNameOrAddr->setHeight(f.Height() - f.lblNameOrAddr->Height() - 1080); });
    on([&] { f.lstNameOrAddr->setTop(690); });
    on([&] { f.lstSubject->setHeight(f.Height() / 5); });
    on([&] { f.lstSubject->setTop(480); });
    on([&] { f.lblHead->setTop(f.lstSubject->Height() + f.lstSubject->Top() + 60); });
    on([&] {
        f.txtMail->setHeight(f.lblNameOrAddr->Height() + f.lstNameOrAddr->Height() -
                             (f.lstSubject->Height() + f.lblHead->Height()) - 390);
    });
    // Kept: the pane starts 10 twips above the bottom of the header.
    on([&] {
        f.txtMail->setTop(f.lstSubject->Top() + f.lstSubject->Height() + f.lblHead->Height() + 50);
    });
}

void layColumns(frmTolvek& f, const ResumeNext& on)
{
    on([&] {
        if (f.Width() < kLeastWidth) f.setWidth(kLeastWidth);
    });
    on([&] { f.lstNameOrAddr->setWidth(f.Width() / 4); });
    on([&] { f.lstNameOrAddr->setLeft(0); });
    on([&] { f.lstSubject->setWidth(f.Width() - f.lstNameOrAddr->Width() - 180); });
    on([&] { f.lstSubject->setLeft(f.lstNameOrAddr->Width() + f.lstNameOrAddr->Left() + 50); });
    on([&] { f.lblHead->setWidth(f.lstSubject->Width() - 300); });
    on([&] { f.lblHead->setLeft(f.lstSubject->Left() + 300); });
    on([&] { f.txtMail->setWidth(f.lstSubject->Width()); });
    on([&] { f.txtMail->setHeight(f.txtMail->Height() + f.lblNameOrAddr->Height()); });
    on([&] { f.txtMail->setLeft(f.lstSubject->Left()); });
}

void layLabels(frmTolvek& f, const ResumeNext& on)
{
    on([&] { f.lblDate->setTop(120); });
    on([&] { f.lblDate->setLeft(f.Width() - f.lblDate->Width() - 50); });
    on([&] { f.lblRecCount->setTop(120); });
    on([&] { f.lblRecCount->setLeft(f.lblDate->Left() - f.lblRecCount->Width() - 200); });
    on([&] { f.lblNameOrAddr->setTop(480); });
    on([&] { f.lblNameOrAddr->setLeft(0); });
    on([&] { f.lblNameOrAddr->setWidth(f.lstNameOrAddr->Width()); });
    // Replaces the 690 above, so that the list ends 20 twips above the end of the mail
    // pane.
    on([&] {
        f.lstNameOrAddr->setTop(f.lstSubject->Top() + f.lstSubject->Height() + f.lblHead->Height() +
                                f.txtMail->Height() + 30 - f.lstNameOrAddr->Height());
    });
    on([&] { f.Line1->setPoints(0, 3, f.Width(), 3); });
}

}

// Enforcing the minimum size fires the event again; that nested event returns at once.
void frmTolvek::Form_Resize()
{
    constexpr int kMinimized = 1;
    ResumeNext on{u"Form_Resize"};
    // A minimised window has no useful size to lay out.
    if (WindowState() == kMinimized || gResizeBusy == -1) return;
    gResizeBusy = -1;
    layRows(*this, on);
    layColumns(*this, on);
    layLabels(*this, on);
    gResizeBusy = 0;
}

}
