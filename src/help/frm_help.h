// The help window: the manual's pages with table of contents, index and search.
//
// It is never modal, and it stays usable while a dialog waits: it is then owned by that
// dialog. Everything in it can be reached by keyboard alone; help.html lists the keys.
#pragma once
#include "help/help_book.h"
#include "platform/forms/form.h"

class QBoxLayout;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;
class QTreeWidget;
class QUrl;

namespace tolvek {

class HelpBrowser;

class frmHelp : public Form {
public:
    frmHelp();

    // Opens the window or brings it to the front. `address` is a page of the manual
    // with or without a place; empty for the contents. False if the file can't be
    // shown.
    bool Open(const Text& file, const QString& address);
    // The same, at the place that explains the text of a message box, which is marked.
    bool OpenMessage(const Text& file, TextView message);

    // Valid while loaded.
    HelpBrowser* page = nullptr;
    QTabWidget* lists = nullptr;
    QTreeWidget* contents = nullptr;
    QLineEdit* term = nullptr; // narrows the index
    QListWidget* terms = nullptr;
    QLineEdit* wanted = nullptr; // the search
    QListWidget* hits = nullptr;
    QPushButton *back = nullptr, *forward = nullptr, *home = nullptr, *larger = nullptr,
                *smaller = nullptr;

protected:
    void buildControls() override;
    void Form_Load() override;

private:
    void buildLists();
    void buildButtons(QBoxLayout& row);
    void buildKeys();
    QWidget* listWithField(QLineEdit*& field, QListWidget*& list, const QString& names);
    void connectEvents();
    void fillContents();
    void fillTerms();
    void search();
    void showHit();
    void showMarked(std::vector<Text> words);
    void selectInContents(const QUrl& address);
    bool makeReady(const Text& file);
    void comeToFront();

    std::optional<HelpBook> book_;
};

}
