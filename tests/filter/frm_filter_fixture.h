// The filter editor and its user's actions: typing a rule, adding it, picking a row,
// leaving.
#pragma once
#include "filter_dialogs.h"

namespace tolvek::test {

class FrmFilterTest : public FilterDialogs {
protected:
    void atEditor(const std::function<void()>& steps)
    {
        const ModalScript script("frmFilter", [&](QWidget&) { steps(); });
        editor.ShowModal();
        EXPECT_FALSE(editor.Loaded());
    }
    void enter(const Text& title, int terms, int act, const Text& data)
    {
        editor.txtFilterHeader->setText(title);
        editor.txtTerms->setText(data);
        if (terms >= 0) click(*editor.optTerms[terms]);
        if (act >= 0) click(*editor.optAct[act]);
    }
    void add(const Text& title, int terms = 0, int act = 0, const Text& data = u"x")
    {
        enter(title, terms, act, data);
        click(*editor.comAdd);
    }
    void pick(int row) { clickCell(*editor.grdFilter, row, 1); }
    void ok() { click(*editor.comOk); }
    void cancel() { click(*editor.comCancel); }
    void expectAreaEmpty()
    {
        EXPECT_EQ(editor.txtFilterHeader->Text(), u"");
        EXPECT_EQ(editor.txtTerms->Text(), u"");
        EXPECT_EQ(setIn(editor.optTerms), -1);
        EXPECT_EQ(setIn(editor.optAct), -1);
    }
};

}
