#include "help/frm_help.h"

#include "help/help_browser.h"
#include "help/help_search.h"
#include "platform/forms/events.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/screen.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace tolvek {

namespace {

constexpr float kFormWidth = 16200;
constexpr float kFormHeight = 10500;
constexpr float kOfTheScreen = 0.9F;
constexpr int kListPixels = 250;
constexpr int kListSpacing = 2;
constexpr int kAddress = Qt::UserRole;

// The pages that explain message boxes.
constexpr QLatin1StringView kMessagePages[] = {QLatin1StringView("messages.html"),
                                               QLatin1StringView("errors.html")};

// The tabs, in their order.
enum Tab { kContentsTab, kTermsTab, kSearchTab };

QString addressOf(const QListWidgetItem& item)
{
    return item.data(kAddress).toString();
}

void add(QListWidget& list, const QString& text, const QString& address)
{
    auto* item = new QListWidgetItem(text, &list);
    item->setData(kAddress, address);
}

// The window below a dialog takes no input, unless that dialog owns it.
class OwnedByTheDialog : public QObject {
public:
    explicit OwnedByTheDialog(QWidget& window) : QObject(&window), window_(window)
    {
        window.installEventFilter(this);
        follow();
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        // Queued: the dialog is still being shown.
        if (event->type() == QEvent::WindowBlocked)
            QMetaObject::invokeMethod(
                this, [this] { follow(); }, Qt::QueuedConnection);
        return false;
    }

private:
    void follow()
    {
        const QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == &window_) return;
        window_.winId(); // creates the native window
        window_.windowHandle()->setTransientParent(dialog ? dialog->windowHandle() : nullptr);
    }

    QWidget& window_;
};

}

frmHelp::frmHelp() : Form(u"frmHelp", BorderStyle::Sizable)
{
    setCaption(u"Tolvek ヘルプ");
    setTitleOnly();
    setWidth(std::min(kFormWidth, Screen::Width() * kOfTheScreen));
    setHeight(std::min(kFormHeight, Screen::Height() * kOfTheScreen));
}

bool frmHelp::makeReady(const Text& file)
{
    if (!Loaded()) {
        book_ = HelpBook::read(existingPath(file));
        if (!book_) return false;
    }
    Show();
    comeToFront();
    page->mark({});
    return true;
}

bool frmHelp::Open(const Text& file, const QString& address)
{
    if (!makeReady(file)) return false;
    page->open(address.isEmpty() ? QString(HelpBook::kContents) : address);
    return true;
}

// Failures are explained by their description, on a page of their own.
bool frmHelp::OpenMessage(const Text& file, TextView message)
{
    if (!makeReady(file)) return false;
    QString address = kMessagePages[0];
    Text explained;
    for (const QLatin1StringView name : kMessagePages)
        if (const HelpBook::Page* candidate = book_->page(name))
            if (Text part = explainedPart(message, *candidate); part.size() > explained.size()) {
                address = name;
                explained = std::move(part);
            }
    page->open(address);
    if (!explained.empty()) showMarked({explained});
    return true;
}

void frmHelp::showMarked(std::vector<Text> words)
{
    page->mark(std::move(words));
    page->moveCursor(QTextCursor::End);
    page->toNextMark(1); // from the end to the first
}

void frmHelp::comeToFront()
{
    window()->raise();
    window()->activateWindow();
    page->setFocus();
}

void frmHelp::buildControls()
{
    page = new HelpBrowser(&client());
    page->setBook(book_ ? &*book_ : nullptr);
    buildLists();
    auto* split = new QSplitter(&client());
    split->addWidget(lists);
    split->addWidget(page);
    split->setStretchFactor(1, 1);
    split->setSizes({kListPixels, 4 * kListPixels});
    split->setChildrenCollapsible(false);
    auto* rows = new QVBoxLayout(&client());
    auto* row = new QHBoxLayout;
    buildButtons(*row);
    rows->addLayout(row);
    rows->addWidget(split, 1);
    buildKeys();
    connectEvents();
}

void frmHelp::buildLists()
{
    contents = new QTreeWidget;
    contents->setObjectName(QStringLiteral("contents"));
    contents->setAccessibleName(QStringLiteral("目次"));
    contents->setHeaderHidden(true);
    lists = new QTabWidget(&client());
    lists->setObjectName(QStringLiteral("lists"));
    lists->setAccessibleName(QStringLiteral("探しかた"));
    lists->addTab(contents, QStringLiteral("目次"));
    lists->addTab(listWithField(term, terms, QStringLiteral("索引")), QStringLiteral("索引"));
    lists->addTab(listWithField(wanted, hits, QStringLiteral("検索")), QStringLiteral("検索"));
}

QWidget* frmHelp::listWithField(QLineEdit*& field, QListWidget*& list, const QString& names)
{
    auto* tab = new QWidget;
    auto* rows = new QVBoxLayout(tab);
    field = new QLineEdit(tab);
    field->setAccessibleName(names + QStringLiteral("する言葉"));
    field->setPlaceholderText(names + QStringLiteral("する言葉"));
    field->setClearButtonEnabled(true);
    list = new QListWidget(tab);
    list->setAccessibleName(names + QStringLiteral("の結果"));
    list->setWordWrap(true);
    list->setAlternatingRowColors(true);
    list->setSpacing(kListSpacing);
    rows->addWidget(field);
    rows->addWidget(list, 1);
    return tab;
}

void frmHelp::buildButtons(QBoxLayout& row)
{
    const auto button = [&](const char* name, const QString& caption) {
        auto* made = new QPushButton(caption, &client());
        made->setObjectName(QString::fromLatin1(name));
        row.addWidget(made);
        return made;
    };
    back = button("back", QStringLiteral("戻る(&B)"));
    forward = button("forward", QStringLiteral("進む(&N)"));
    home = button("home", QStringLiteral("目次(&C)"));
    larger = button("larger", QStringLiteral("文字を大きく(&L)"));
    smaller = button("smaller", QStringLiteral("文字を小さく(&S)"));
    row.addStretch(1);
    back->setEnabled(false);
    forward->setEnabled(false);
}

void frmHelp::buildKeys()
{
    const auto key = [this](const QKeySequence& keys, auto action) {
        auto* shortcut = new QShortcut(keys, window());
        QObject::connect(shortcut, &QShortcut::activated, page, action);
    };
    key(Qt::ALT | Qt::Key_Left, [this] { page->backward(); });
    key(Qt::ALT | Qt::Key_Right, [this] { page->forward(); });
    key(Qt::ALT | Qt::Key_Home, [this] { page->open(HelpBook::kContents); });
    key(Qt::CTRL | Qt::Key_Plus, [this] { page->zoomIn(); });
    key(Qt::CTRL | Qt::Key_Semicolon, [this] { page->zoomIn(); }); // "+" of a Japanese keyboard
    key(Qt::CTRL | Qt::Key_Minus, [this] { page->zoomOut(); });
    key(Qt::CTRL | Qt::Key_0, [this] { page->resetZoom(); });
    key(Qt::Key_F3, [this] { page->toNextMark(1); });
    key(Qt::SHIFT | Qt::Key_F3, [this] { page->toNextMark(-1); });
    key(Qt::CTRL | Qt::Key_F, [this] {
        lists->setCurrentIndex(kSearchTab);
        wanted->setFocus();
        wanted->selectAll();
    });
    key(Qt::Key_Escape, [this] { runEvent([this] { Unload(); }); });
}

void frmHelp::connectEvents()
{
    const auto open = [this](const QString& address) {
        if (!address.isEmpty()) page->open(address);
    };
    QObject::connect(back, &QPushButton::clicked, page, [this] { page->backward(); });
    QObject::connect(forward, &QPushButton::clicked, page, [this] { page->forward(); });
    QObject::connect(page, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    QObject::connect(page, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
    QObject::connect(page, &QTextBrowser::sourceChanged, page,
                     [this](const QUrl& address) { selectInContents(address); });
    QObject::connect(home, &QPushButton::clicked, page,
                     [this] { page->open(HelpBook::kContents); });
    QObject::connect(larger, &QPushButton::clicked, page, [this] { page->zoomIn(); });
    QObject::connect(smaller, &QPushButton::clicked, page, [this] { page->zoomOut(); });
    const auto openLine = [open](QTreeWidgetItem* item, int) {
        open(item->data(0, kAddress).toString());
    };
    QObject::connect(contents, &QTreeWidget::itemActivated, page, openLine);
    QObject::connect(contents, &QTreeWidget::itemClicked, page, openLine);
    const auto openTerm = [open](QListWidgetItem* item) { open(addressOf(*item)); };
    QObject::connect(terms, &QListWidget::itemActivated, page, openTerm);
    QObject::connect(terms, &QListWidget::itemClicked, page, openTerm);
    QObject::connect(term, &QLineEdit::textChanged, page, [this] { fillTerms(); });
    QObject::connect(wanted, &QLineEdit::textChanged, page, [this] { search(); });
    QObject::connect(wanted, &QLineEdit::returnPressed, page, [this] {
        hits->setCurrentRow(0);
        showHit();
    });
    QObject::connect(hits, &QListWidget::itemActivated, page, [this] { showHit(); });
    QObject::connect(hits, &QListWidget::itemClicked, page, [this] { showHit(); });
}

void frmHelp::Form_Load()
{
    CentreOnScreen();
    fillContents();
    fillTerms();
    new OwnedByTheDialog(*window()); // owned by the window
}

// A heading holds the links that follow it.
void frmHelp::fillContents()
{
    QTreeWidgetItem* chapter = nullptr;
    for (const HelpLink& link : book_->contents()) {
        const bool heading = link.address.isEmpty();
        auto* item =
            !heading && chapter ? new QTreeWidgetItem(chapter) : new QTreeWidgetItem(contents);
        item->setText(0, link.title);
        item->setData(0, kAddress, link.address);
        if (heading) chapter = item;
    }
    contents->expandAll();
}

void frmHelp::fillTerms()
{
    const Text typed = trim(fromQt(term->text()));
    terms->clear();
    for (const HelpLink& link : book_->terms())
        if (!link.address.isEmpty() &&
            (typed.empty() || inStr(fromQt(link.title), typed, Compare::TextMode) > 0))
            add(*terms, link.title, link.address);
}

void frmHelp::search()
{
    hits->clear();
    const Text typed = fromQt(wanted->text());
    for (const HelpHit& hit : searchHelp(*book_, typed))
        add(*hits, hit.line.isEmpty() ? hit.title : hit.title + QLatin1Char('\n') + hit.line,
            hit.page);
    page->mark(wordsOf(typed));
}

void frmHelp::showHit()
{
    const QListWidgetItem* const item = hits->currentItem();
    if (!item) return;
    page->open(addressOf(*item));
    showMarked(wordsOf(fromQt(wanted->text())));
}

void frmHelp::selectInContents(const QUrl& address)
{
    const QString name = address.path().mid(1);
    for (QTreeWidgetItemIterator line(contents); *line; ++line)
        if ((*line)->data(0, kAddress).toString() == name) contents->setCurrentItem(*line);
}

}
