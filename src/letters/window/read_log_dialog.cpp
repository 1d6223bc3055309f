#include "letters/window/read_log_dialog.h"

#include "letters/window/letter_texts.h"
#include "platform/forms/qt_text.h"
#include "platform/system/files.h"

#include <QHeaderView>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <ranges>
#include <system_error>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kDetailsRole = Qt::UserRole;

// What a column counts.
struct Totals {
    std::size_t held = 0, stored = 0, known = 0, keptOut = 0, left = 0;
    bool addsUp = true;
    bool complete = true; // every box could be read

    void add(const BoxRecord& box)
    {
        held += std::size_t(box.held);
        stored += std::size_t(box.stored);
        known += std::size_t(box.known);
        for (const KeptOut& each : box.keptOut)
            keptOut += std::size_t(each.mails);
        left += std::size_t(box.noDate.count + box.noText.count + box.failed.count +
                            box.growing.count + box.unread);
        addsUp = addsUp && box.addsUp();
        // Nobody has every drawer.
        complete = complete && (box.failure.empty() || box.isMissing()) && box.files.count == 0;
    }
};

QString resultText(const Totals& totals)
{
    if (!totals.addsUp) return u"数が合いません"_s;
    if (!totals.complete) return u"読めない箱やファイルがあります"_s;
    return totals.left > 0 ? u"保存できないメールがあります"_s : u"すべて保存されています"_s;
}

void setCells(QTreeWidgetItem& item, const QString& name, const Totals& totals)
{
    item.setText(0, name);
    int column = 1;
    for (const std::size_t count :
         {totals.held, totals.stored, totals.known, totals.keptOut, totals.left}) {
        item.setText(column, countText(count));
        item.setTextAlignment(column++, Qt::AlignRight | Qt::AlignVCenter);
    }
    item.setText(column, resultText(totals));
}

QTreeWidgetItem* boxItem(const BoxRecord& box)
{
    auto* const item = new QTreeWidgetItem;
    Totals totals;
    totals.add(box);
    setCells(*item, toQt(box.box), totals);
    if (!box.failure.empty()) item->setText(6, toQt(box.failure));
    item->setData(0, kDetailsRole, paintedText(readLogText({u"", {box}})).mid(3).trimmed());
    return item;
}

QTreeWidgetItem* readItem(const ReadRecord& record)
{
    auto* const item = new QTreeWidgetItem;
    Totals totals;
    for (const BoxRecord& box : record.boxes) {
        totals.add(box);
        item->addChild(boxItem(box));
    }
    setCells(*item, toQt(record.time), totals);
    item->setData(0, kDetailsRole, paintedText(readLogText(record)));
    return item;
}

}

ReadLogDialog::ReadLogDialog(const std::filesystem::path& log, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(u"読み込みの記録"_s);
    resize(900, 560);
    build();
    try {
        fill(parseReadLog(fromUtf8(readFile(log))));
    } catch (const std::system_error&) {
        details_->setPlainText(
            u"記録がありません。Tolvek でメールを読み込むと、ここに結果が出ます。\n\n"_s +
            QString::fromStdU16String(log.u16string()));
    }
}

void ReadLogDialog::build()
{
    reads_ = new QTreeWidget;
    reads_->setAccessibleName(u"読み込みの一覧"_s);
    reads_->setHeaderLabels({u"読み込み"_s, u"箱のメール"_s, u"新しく保存"_s, u"保存済み"_s,
                             u"条件で除外"_s, u"保存せず"_s, u"結果"_s});
    reads_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    details_ = new QPlainTextEdit;
    details_->setReadOnly(true);
    details_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    details_->setAccessibleName(u"詳しい記録"_s);
    auto* const parts = new QSplitter(Qt::Vertical);
    parts->addWidget(reads_);
    parts->addWidget(details_);
    (new QVBoxLayout(this))->addWidget(parts);
    connect(reads_, &QTreeWidget::currentItemChanged, this, &ReadLogDialog::showDetails);
}

void ReadLogDialog::fill(const std::vector<ReadRecord>& records)
{
    for (const ReadRecord& record : records | std::views::reverse) // the newest first
        reads_->addTopLevelItem(readItem(record));
    if (QTreeWidgetItem* const newest = reads_->topLevelItem(0)) {
        newest->setExpanded(true);
        reads_->setCurrentItem(newest);
    }
}

void ReadLogDialog::showDetails()
{
    if (const QTreeWidgetItem* const item = reads_->currentItem())
        details_->setPlainText(item->data(0, kDetailsRole).toString());
}

}
