#include "letters/window/files_dialog.h"

#include "letters/window/letter_texts.h"
#include "platform/forms/qt_text.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <system_error>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kIndexRole = Qt::UserRole; // into listed_

// A folder that can't be listed has no files to offer.
template <class List>
std::vector<ArchiveFile> listedBy(List list, const std::filesystem::path& folder)
{
    try {
        return list(folder);
    } catch (const std::system_error&) {
        return {};
    }
}

const ArchiveStatus* statusOf(const Library& library, const std::filesystem::path& path)
{
    for (const Library::Source& source : library.sources())
        if (source.status.file.path == path) return &source.status;
    return nullptr;
}

QString kindText(ArchiveKind kind)
{
    switch (kind) {
    case ArchiveKind::Live:
        return u"今のデータベース"_s;
    case ArchiveKind::Backup:
        return u"バックアップ"_s;
    case ArchiveKind::Older:
    case ArchiveKind::Jet:
        return u"以前の版"_s;
    case ArchiveKind::Copy:
        return u"控え"_s;
    case ArchiveKind::Chosen:
        break;
    }
    return u"選んだファイル"_s;
}

}

QString stateText(const ArchiveStatus& status)
{
    switch (status.state) {
    case ReadState::Unread:
        return u"読み込み中"_s;
    case ReadState::Waiting:
        return u"書き込み中のため待っています"_s;
    case ReadState::Read:
        return countText(status.letters) + u" 通"_s;
    case ReadState::Failed:
        break;
    }
    return u"読めません（"_s + QString::number(status.error) + u"： "_s + toQt(status.description) +
           u"）"_s;
}

FilesDialog::FilesDialog(const std::filesystem::path& folder, const Library& library,
                         QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(u"探すファイル"_s);
    resize(620, 440);
    build();
    const std::vector<ArchiveFile> archives = listedBy(archivesIn, folder);
    const std::vector<ArchiveFile> copies = listedBy(copiesIn, folder);
    std::vector<ArchiveFile> others;
    const auto isListed = [&](const ArchiveFile& file) {
        const auto same = [&](const ArchiveFile& each) { return each.path == file.path; };
        return std::ranges::any_of(archives, same) || std::ranges::any_of(copies, same);
    };
    for (const Library::Source& source : library.sources())
        if (!isListed(source.status.file)) others.push_back(source.status.file);
    addGroup(u"データベースとバックアップ"_s, archives, library, true);
    addGroup(u"ほかのファイル"_s, others, library, true);
    chosen_ = tree_->topLevelItem(1);
    addGroup(u"控え（消したメールも入っています）"_s, copies, library, false);
    enableOk();
}

void FilesDialog::build()
{
    tree_ = new QTreeWidget;
    tree_->setAccessibleName(u"ファイルの一覧"_s);
    tree_->setHeaderLabels({u"ファイル"_s, u"種類"_s, u"状態"_s});
    tree_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* const buttons = new QDialogButtonBox;
    ok_ = buttons->addButton(u"OK"_s, QDialogButtonBox::AcceptRole);
    buttons->addButton(u"キャンセル"_s, QDialogButtonBox::RejectRole);
    auto* const addFile = buttons->addButton(u"ファイルを追加…"_s, QDialogButtonBox::ActionRole);
    auto* const addFolder =
        buttons->addButton(u"フォルダーを追加…"_s, QDialogButtonBox::ActionRole);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(
        new QLabel(u"チェックを付けたファイルの中を探します。同じ手紙は 1 通にまとめます。"_s));
    layout->addWidget(tree_);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(tree_, &QTreeWidget::itemChanged, this, &FilesDialog::enableOk);
    connect(addFile, &QPushButton::clicked, this,
            [this] { addChosen(QFileDialog::getOpenFileNames(this, u"探すファイル"_s)); });
    connect(addFolder, &QPushButton::clicked, this,
            [this] { addChosen({QFileDialog::getExistingDirectory(this, u"探すフォルダー"_s)}); });
}

void FilesDialog::addGroup(const QString& title, const std::vector<ArchiveFile>& files,
                           const Library& library, bool expanded)
{
    auto* const group = new QTreeWidgetItem(tree_, {title});
    group->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    for (const ArchiveFile& file : files) {
        const ArchiveStatus* const status = statusOf(library, file.path);
        addFile(*group, file, status ? stateText(*status) : QString(), status != nullptr);
    }
    group->setExpanded(expanded);
}

void FilesDialog::addFile(QTreeWidgetItem& group, const ArchiveFile& file, const QString& state,
                          bool ticked)
{
    listed_.push_back(file);
    auto* const item = new QTreeWidgetItem(&group, {toQt(file.name()), kindText(file.kind), state});
    item->setToolTip(0, QString::fromStdU16String(file.path.u16string()));
    item->setData(0, kIndexRole, static_cast<int>(listed_.size()) - 1);
    item->setCheckState(0, ticked ? Qt::Checked : Qt::Unchecked);
}

void FilesDialog::addChosen(const QStringList& paths)
{
    for (const QString& path : paths)
        if (!path.isEmpty())
            for (const ArchiveFile& file :
                 listedBy(archivesAt, std::filesystem::path(path.toStdU16String())))
                addFile(*chosen_, file, {}, true);
    enableOk();
}

std::vector<ArchiveFile> FilesDialog::files() const
{
    std::vector<ArchiveFile> ticked;
    for (int group = 0; group < tree_->topLevelItemCount(); ++group)
        for (int row = 0; row < tree_->topLevelItem(group)->childCount(); ++row) {
            const QTreeWidgetItem* const item = tree_->topLevelItem(group)->child(row);
            if (item->checkState(0) == Qt::Checked)
                ticked.push_back(listed_.at(std::size_t(item->data(0, kIndexRole).toInt())));
        }
    return ticked;
}

void FilesDialog::enableOk()
{
    ok_->setEnabled(!files().empty());
}

}
