// What the window consists of: its widgets, menus and connections.
#include "letters/window/letters_window.h"

#include "letters/window/letter_view.h"
#include "letters/window/marked_delegate.h"
#include "letters/window/people_model.h"
#include "letters/window/results_model.h"
#include "letters/window/take_out.h"
#include "letters/window/year_strip.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTableView>
#include <QVBoxLayout>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

QTableView* newList(const QString& accessibleName)
{
    auto* const list = new QTableView;
    list->setAccessibleName(accessibleName);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setShowGrid(false);
    list->setWordWrap(false);
    list->setTabKeyNavigation(false);
    list->verticalHeader()->hide();
    list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    list->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    return list;
}

}

void LettersWindow::build()
{
    auto* const all = new QWidget;
    auto* const rows = new QVBoxLayout(all);
    rows->setContentsMargins(8, 8, 8, 0);
    rows->addWidget(buildSearchRow());
    chips_ = new QWidget;
    chipsRow_ = new QHBoxLayout(chips_);
    chipsRow_->setContentsMargins(0, 0, 0, 0);
    chipsRow_->addStretch();
    rows->addWidget(chips_);
    strip_ = new YearStrip;
    strip_->setToolTip(u"上が受け取った手紙、下が出した手紙。なぞると、その期間だけになります"_s);
    rows->addWidget(strip_);
    rows->addWidget(buildPanes(), 1);
    setCentralWidget(all);
    status_ = new QLabel;
    status_->setTextFormat(Qt::PlainText);
    statusBar()->addWidget(status_, 1);
    takeOutRun_ = new TakeOutRun(*this);
}

QWidget* LettersWindow::buildSearchRow()
{
    auto* const widget = new QWidget;
    auto* const row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    auto* const label = new QLabel(u"探す(&F)"_s);
    field_ = new QLineEdit;
    field_->setObjectName(u"field"_s);
    field_->setClearButtonEnabled(true);
    field_->setPlaceholderText(
        u"言葉を空白で区切って　例： 旅行 \"星の観察\" -宣伝 差出人:はな 年:2001"_s);
    field_->setAccessibleName(u"探す言葉"_s);
    label->setBuddy(field_);
    exact_ = new QCheckBox(u"表記どおり(&X)"_s);
    exact_->setObjectName(u"exact"_s);
    exact_->setToolTip(u"大文字と小文字、全角と半角、かな、新旧の漢字を区別します"_s);
    auto* const files = new QPushButton(u"ファイル(&L)…"_s);
    files->setToolTip(u"どのファイルの中を探すかを選びます"_s);
    connect(files, &QPushButton::clicked, this, &LettersWindow::chooseFiles);
    for (QWidget* const part : {static_cast<QWidget*>(label), static_cast<QWidget*>(field_),
                                static_cast<QWidget*>(exact_), static_cast<QWidget*>(files)})
        row->addWidget(part, part == field_ ? 1 : 0);
    return widget;
}

void LettersWindow::buildLists()
{
    peopleModel_ = new PeopleModel(this);
    people_ = newList(u"相手"_s);
    people_->setObjectName(u"people"_s);
    people_->setModel(peopleModel_);
    people_->setSelectionMode(QAbstractItemView::SingleSelection);
    people_->horizontalHeader()->hide();
    people_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    people_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);

    resultsModel_ = new ResultsModel(this);
    results_ = newList(u"見つかった手紙"_s);
    results_->setObjectName(u"results"_s);
    results_->setModel(resultsModel_);
    results_->setItemDelegate(new MarkedDelegate(this));
    results_->setAlternatingRowColors(true);
    results_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    QHeaderView& columns = *results_->horizontalHeader();
    columns.setHighlightSections(false);
    columns.setStretchLastSection(true);
    columns.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

QWidget* LettersWindow::buildPanes()
{
    buildLists();
    letter_ = new LetterView;
    letter_->setObjectName(u"letter"_s);
    panes_ = new QSplitter;
    panes_->setChildrenCollapsible(false);
    for (QWidget* const pane : {static_cast<QWidget*>(people_), static_cast<QWidget*>(results_),
                                static_cast<QWidget*>(letter_)})
        panes_->addWidget(pane);
    return panes_;
}

void LettersWindow::buildMenus()
{
    QMenu& file = *menuBar()->addMenu(u"ファイル(&I)"_s);
    file.addAction(u"探すファイル(&L)…"_s, QKeySequence::Open, this, &LettersWindow::chooseFiles);
    file.addAction(u"手紙を取り出す(&E)…"_s, QKeySequence::Save, this, &LettersWindow::takeOut);
    file.addAction(u"印刷(&P)…"_s, QKeySequence::Print, this, &LettersWindow::print);
    file.addAction(u"読み込みの記録(&R)…"_s, QKeySequence(u"Ctrl+R"_s), this,
                   &LettersWindow::showReadLog);
    file.addSeparator();
    file.addAction(u"閉じる(&C)"_s, QKeySequence(u"Ctrl+Q"_s), this, &QWidget::close);

    QMenu& find = *menuBar()->addMenu(u"探す(&S)"_s);
    find.addAction(u"言葉を入れる(&F)"_s, QKeySequence::Find, this, [this] {
        field_->setFocus(Qt::ShortcutFocusReason);
        field_->selectAll();
    });
    find.addAction(u"次の一致(&N)"_s, QKeySequence(Qt::Key_F3), this, [this] { goToHit(true); });
    find.addAction(u"前の一致(&P)"_s, QKeySequence(Qt::SHIFT | Qt::Key_F3), this,
                   [this] { goToHit(false); });
    find.addSeparator();
    conversation_ = find.addAction(u"このやりとりだけ(&T)"_s, QKeySequence(u"Ctrl+T"_s), this,
                                   &LettersWindow::toggleConversation);
    conversation_->setCheckable(true);
    find.addAction(u"絞り込みをすべて解く(&A)"_s, QKeySequence(u"Ctrl+Shift+T"_s), this, [this] {
        choices_ = {};
        search();
    });

    QMenu& view = *menuBar()->addMenu(u"表示(&V)"_s);
    view.addAction(u"文字を大きく(&L)"_s, QKeySequence::ZoomIn, this, [this] { zoom(1); });
    view.addAction(u"文字を小さく(&S)"_s, QKeySequence::ZoomOut, this, [this] { zoom(-1); });
    view.addAction(u"標準の大きさ(&N)"_s, QKeySequence(u"Ctrl+0"_s), this, [this] { zoom(0); });
    QMenu& scheme = *view.addMenu(u"配色(&C)"_s);
    auto* const group = new QActionGroup(this);
    const QString names[] = {u"システムに合わせる"_s, u"明るい"_s, u"暗い"_s};
    for (int n = 0; n < 3; ++n) {
        schemes_[n] = group->addAction(names[n]);
        schemes_[n]->setCheckable(true);
        connect(schemes_[n], &QAction::triggered, this, [this, n] { setScheme(Scheme(n)); });
    }
    scheme.addActions(group->actions());
}

void LettersWindow::connectAll()
{
    connect(&desk_, &DeskSignals::libraryChanged, this, &LettersWindow::takeLibrary);
    connect(&desk_, &DeskSignals::answered, this, &LettersWindow::takeAnswer);
    connect(field_, &QLineEdit::textChanged, this, &LettersWindow::search);
    connect(exact_, &QCheckBox::toggled, this, &LettersWindow::search);
    connect(strip_, &YearStrip::chosen, this, &LettersWindow::chooseMonths);
    connect(people_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { choosePerson(current.row()); });
    connect(results_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &LettersWindow::showCurrentLetter);
    connect(letter_, &LetterView::zoomed, this, &LettersWindow::zoom);
    connect(takeOutRun_, &TakeOutRun::ended, this,
            [this](bool, const QString& words) { statusBar()->showMessage(words, 20000); });
    field_->installEventFilter(this);
    people_->viewport()->installEventFilter(this);
    results_->viewport()->installEventFilter(this);
}

}
