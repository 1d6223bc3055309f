// The window of TolvekLetters: one field that finds as one types, the strip of years, the
// correspondents, the list and the letter.
//
// The window never reads an archive itself. Each change of the field, the strip or the
// correspondents becomes a Request to the desk, whose thread answers; an answer to
// anything but the newest request is dropped.
#pragma once
#include "letters/window/desk_signals.h"
#include "letters/window/window_settings.h"

#include <QMainWindow>

class QAction;
class QCheckBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QSplitter;
class QTableView;
class QToolButton;

namespace tolvek {

class LetterView;
class PeopleModel;
class ResultsModel;
class TakeOutRun;
class YearStrip;

struct LettersStart {
    std::filesystem::path folder;   // the archive's: its files are shown and its log
    std::vector<ArchiveFile> files; // empty: all of the folder
    Text person;                    // an address or a name to begin with
    QString settingsFile;           // empty: nothing is remembered
    DeskSettings desk;
};

class LettersWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit LettersWindow(LettersStart start);
    ~LettersWindow() override;

    // True when the newest request has been answered from all files.
    bool isSettled() const;

signals:
    void settled();

protected:
    void closeEvent(QCloseEvent*) override;
    void showEvent(QShowEvent*) override;
    bool event(QEvent*) override;
    bool eventFilter(QObject*, QEvent*) override;

private:
    // By what a choice is kept when a new Library gives new numbers.
    struct Choices {
        std::optional<Months> months;
        Text person;                               // an address or a name; empty: all
        std::optional<std::uint64_t> conversation; // a letter of it
    };

    void build();
    QWidget* buildSearchRow();
    QWidget* buildPanes();
    void buildLists();
    void buildMenus();
    void connectAll();

    void search();
    Narrowing narrowing() const;
    std::optional<PersonId> chosenPerson() const;
    void takeLibrary(const LibraryPointer& library);
    void takeAnswer(const AnswerPointer& answer);
    void giveUpUnknownPerson();
    void showAxis();
    void showStatus();
    void showChips();
    void addChip(const QString& words, void (LettersWindow::*undo)());
    void undoMonths();
    void undoPerson();
    void undoConversation();

    void choosePerson(int row);
    void chooseMonths(const std::optional<Months>& months);
    void toggleConversation();
    void showCurrentLetter();
    void keepCurrent(std::optional<std::uint64_t> identity);
    void goToRow(int row);
    void goToHit(bool forward);
    std::optional<LetterId> currentLetter() const;
    std::vector<LetterId> selectedLetters() const;

    void chooseFiles();
    void takeOut();
    void print();
    void showReadLog();
    bool zoomsBy(const QWheelEvent& wheel);
    bool takesKey(const QKeyEvent& pressed);
    void zoom(int steps);
    void setTextPoints(int points);
    void setScheme(Scheme scheme);
    void restoreLook();
    void saveLook() const;

    LettersStart start_;
    DeskSignals desk_;
    LibraryPointer library_;
    std::uint64_t newest_ = 0; // the generation of the newest request
    bool settled_ = false;
    Choices choices_;
    WindowSettings look_;
    std::optional<std::uint64_t> wanted_; // the letter to be on display

    QLineEdit* field_ = nullptr;
    QCheckBox* exact_ = nullptr;
    QWidget* chips_ = nullptr;
    QHBoxLayout* chipsRow_ = nullptr;
    YearStrip* strip_ = nullptr;
    QTableView* people_ = nullptr;
    QTableView* results_ = nullptr;
    LetterView* letter_ = nullptr;
    QSplitter* panes_ = nullptr;
    QLabel* status_ = nullptr;
    QAction* conversation_ = nullptr;
    QAction* schemes_[3] = {};
    PeopleModel* peopleModel_ = nullptr;
    ResultsModel* resultsModel_ = nullptr;
    TakeOutRun* takeOutRun_ = nullptr;
};

}
