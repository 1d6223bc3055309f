#include "letters/window/letters_window.h"

#include "app/file_names.h"
#include "letters/window/files_dialog.h"
#include "letters/window/letter_texts.h"
#include "letters/window/letter_view.h"
#include "letters/window/people_model.h"
#include "letters/window/read_log_dialog.h"
#include "letters/window/results_model.h"
#include "letters/window/take_out.h"
#include "letters/window/year_strip.h"
#include "platform/forms/qt_text.h"
#include "platform/runtime/paths.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>
#include <QTableView>
#include <QToolButton>

#include <algorithm>
#include <system_error>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMessageTime = 20000; // milliseconds

bool isNamed(const Person& person, const Text& by)
{
    const auto same = [&](const Text& each) {
        return compareText(each, by, Compare::TextMode) == 0;
    };
    return same(person.name) || std::ranges::any_of(person.addresses, same);
}

// The list's own selectRow would toggle or extend while the user holds Ctrl or Shift.
void makeCurrent(QTableView& list, int row)
{
    const QModelIndex index = list.model()->index(row, 0);
    list.selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                      QItemSelectionModel::Rows);
    list.scrollTo(index);
}

// A folder that can't be listed has none; the window is empty then.
std::vector<ArchiveFile> archivesOf(const std::filesystem::path& folder)
{
    try {
        return archivesAt(folder);
    } catch (const std::system_error&) {
        return {};
    }
}

// What a person is found again by in another Library.
Text keyOf(const Person& person)
{
    return person.addresses.empty() ? person.name : person.addresses.front();
}

}

LettersWindow::LettersWindow(LettersStart start)
    : start_(std::move(start)), desk_(start_.desk), library_(std::make_shared<Library>())
{
    choices_.person = start_.person;
    setWindowTitle(u"Tolvek の手紙"_s);
    build();
    buildMenus();
    connectAll();
    restoreLook();
    showChips();
    letter_->showNothing({});
    if (start_.files.empty()) start_.files = archivesOf(start_.folder);
    desk_.desk().show(start_.files);
    search();
    field_->setFocus();
}

LettersWindow::~LettersWindow() = default;

bool LettersWindow::isSettled() const
{
    return settled_;
}

// The request holds numbers of the Library on display. If the desk has a newer one by
// now, its libraryChanged is on the way and leads to the next request.
void LettersWindow::search()
{
    settled_ = false;
    newest_ =
        desk_.desk().find({parseQuery(fromQt(field_->text()), exact_->isChecked()), narrowing()});
}

std::optional<PersonId> LettersWindow::chosenPerson() const
{
    if (choices_.person.empty()) return std::nullopt;
    const std::vector<Person>& people = library_->people();
    const auto found = std::ranges::find_if(
        people, [&](const Person& person) { return isNamed(person, choices_.person); });
    if (found == people.end()) return std::nullopt;
    return static_cast<PersonId>(found - people.begin());
}

Narrowing LettersWindow::narrowing() const
{
    Narrowing narrowing;
    narrowing.months = choices_.months;
    narrowing.person = chosenPerson();
    if (choices_.conversation)
        if (const auto letter = library_->find(*choices_.conversation))
            narrowing.conversation = library_->conversationOf(*letter);
    return narrowing;
}

void LettersWindow::takeLibrary(const LibraryPointer& library)
{
    library_ = library;
    showAxis();
    showStatus();
    // Numbers of persons and conversations differ between Libraries.
    if (!choices_.person.empty() || choices_.conversation) search();
}

void LettersWindow::takeAnswer(const AnswerPointer& answer)
{
    if (answer->generation != newest_) return;
    if (answer->library != library_) {
        library_ = answer->library;
        showAxis();
    }
    if (answer->allRead) giveUpUnknownPerson();
    const auto shown = wanted_;
    peopleModel_->show(answer, chosenPerson());
    {
        const QSignalBlocker quiet(people_->selectionModel());
        makeCurrent(*people_, peopleModel_->rowOf(chosenPerson()));
    }
    strip_->showCounts(answer->results.months);
    strip_->showChosen(choices_.months);
    resultsModel_->show(answer);
    keepCurrent(shown);
    showChips();
    settled_ = answer->allRead;
    showStatus();
    if (settled_) emit settled();
}

// The main window's correspondent may have no letter here, such as the user herself. All
// letters are shown then, and nothing claims otherwise.
void LettersWindow::giveUpUnknownPerson()
{
    if (choices_.person.empty() || chosenPerson()) return;
    statusBar()->showMessage(toQt(choices_.person) + u" の手紙はありません"_s, kMessageTime);
    choices_.person.clear();
}

// The letter on display stays if it is still found; else the first one is shown.
void LettersWindow::keepCurrent(std::optional<std::uint64_t> identity)
{
    int row = -1;
    if (identity)
        if (const auto letter = resultsModel_->answer()->library->find(*identity))
            row = resultsModel_->rowOf(*letter);
    if (row < 0 && resultsModel_->rowCount() > 0) row = 0;
    if (row < 0) {
        letter_->showNothing(library_->size() == 0 ? QString() : u"見つかりません"_s);
        return;
    }
    goToRow(row); // shows it: no row is the current one in a list that was filled anew
}

void LettersWindow::showAxis()
{
    std::vector<int> years;
    for (LetterId id = 0; id < library_->size(); ++id) {
        const int year = library_->monthOf(id) / 100;
        if (years.empty() || years.back() != year) years.push_back(year); // they come in order
    }
    strip_->showAxis(MonthAxis(std::move(years)));
}

void LettersWindow::showStatus()
{
    QStringList words;
    const std::size_t found = resultsModel_->answer()->results.letters.size();
    words.push_back(countText(library_->size()) + u" 通のうち "_s + countText(found) + u" 通"_s);
    for (const Library::Source& source : library_->sources())
        if (source.status.state != ReadState::Read)
            words.push_back(toQt(source.status.file.name()) + u"： "_s + stateText(source.status));
    status_->setText(words.join(u"　"_s));
}

void LettersWindow::choosePerson(int row)
{
    const auto person = peopleModel_->personAt(row);
    // The row's number is of the Library that the list shows; a newer one may have come.
    const Library& shown = *resultsModel_->answer()->library;
    choices_.person = person ? keyOf(shown.people().at(*person)) : Text();
    search();
}

void LettersWindow::chooseMonths(const std::optional<Months>& months)
{
    choices_.months = months;
    search();
}

void LettersWindow::toggleConversation()
{
    const auto letter = currentLetter();
    if (choices_.conversation || !letter)
        choices_.conversation.reset();
    else
        choices_.conversation = resultsModel_->answer()->library->letter(*letter).identity;
    search();
}

void LettersWindow::undoMonths()
{
    chooseMonths(std::nullopt);
}

void LettersWindow::undoPerson()
{
    choices_.person.clear();
    search();
}

void LettersWindow::undoConversation()
{
    choices_.conversation.reset();
    search();
}

void LettersWindow::addChip(const QString& words, void (LettersWindow::*undo)())
{
    auto* const chip = new QToolButton;
    chip->setText(words + u"　✕"_s);
    chip->setAccessibleName(words + u"の絞り込みを解く"_s);
    chip->setToolTip(u"この絞り込みを解く"_s);
    connect(chip, &QToolButton::clicked, this, undo);
    chipsRow_->insertWidget(chipsRow_->count() - 1, chip);
}

void LettersWindow::showChips()
{
    for (QToolButton* const chip : chips_->findChildren<QToolButton*>())
        chip->deleteLater();
    if (choices_.months)
        addChip(monthText(choices_.months->first) + u" ～ "_s + monthText(choices_.months->last),
                &LettersWindow::undoMonths);
    if (!choices_.person.empty()) {
        const auto person = chosenPerson();
        addChip(u"相手： "_s + toQt(person ? library_->people().at(*person).name : choices_.person),
                &LettersWindow::undoPerson);
    }
    if (choices_.conversation) addChip(u"このやりとりだけ"_s, &LettersWindow::undoConversation);
    chips_->setVisible(choices_.months || !choices_.person.empty() || choices_.conversation);
    conversation_->setChecked(choices_.conversation.has_value());
}

std::optional<LetterId> LettersWindow::currentLetter() const
{
    const QModelIndex current = results_->currentIndex();
    if (!current.isValid()) return std::nullopt;
    return resultsModel_->letterAt(current.row());
}

void LettersWindow::goToRow(int row)
{
    makeCurrent(*results_, row);
}

// In the order of the list.
std::vector<LetterId> LettersWindow::selectedLetters() const
{
    std::vector<LetterId> letters;
    for (const QModelIndex& row : results_->selectionModel()->selectedRows())
        letters.push_back(resultsModel_->letterAt(row.row()));
    std::ranges::sort(letters);
    return letters;
}

void LettersWindow::showCurrentLetter()
{
    const auto letter = currentLetter();
    conversation_->setEnabled(letter.has_value() || choices_.conversation);
    if (!letter) return;
    const Answer& answer = *resultsModel_->answer();
    wanted_ = answer.library->letter(*letter).identity;
    letter_->showLetter(answer.library, *letter, answer.query);
}

// Beyond the last hit of a letter comes the next letter's first.
void LettersWindow::goToHit(bool forward)
{
    if (forward ? letter_->nextHit() : letter_->previousHit()) return;
    const int row = results_->currentIndex().row() + (forward ? 1 : -1);
    if (!results_->currentIndex().isValid() || row < 0 || row >= resultsModel_->rowCount()) return;
    goToRow(row);
    if (forward)
        letter_->firstHit();
    else
        letter_->lastHit();
}

void LettersWindow::chooseFiles()
{
    FilesDialog dialog(start_.folder, *library_, this);
    if (dialog.exec() != QDialog::Accepted) return;
    start_.files = dialog.files();
    settled_ = false;
    desk_.desk().show(start_.files);
}

void LettersWindow::takeOut()
{
    if (takeOutRun_->isRunning()) return;
    const std::vector<LetterId> selected = selectedLetters();
    const std::vector<LetterId>& all = resultsModel_->answer()->results.letters;
    TakeOutDialog dialog(selected.size(), all.size(), this);
    if (all.empty() || dialog.exec() != QDialog::Accepted) return;
    const TakeOut choice = dialog.choice();
    takeOutRun_->takeOut(resultsModel_->answer()->library, choice.selectionOnly ? selected : all,
                         choice);
}

void LettersWindow::print()
{
    const std::vector<LetterId> selected = selectedLetters();
    if (!selected.empty() && !takeOutRun_->isRunning())
        takeOutRun_->print(resultsModel_->answer()->library, selected);
}

void LettersWindow::showReadLog()
{
    ReadLogDialog(start_.folder / nativePath(kReadLogName), this).exec();
}

}
