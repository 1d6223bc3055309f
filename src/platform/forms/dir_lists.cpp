#include "platform/forms/dir_lists.h"

#include "platform/forms/cut_tips.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"
#include "platform/system/volumes.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyle>

#include <algorithm>
#include <system_error>

namespace tolvek {

namespace {

constexpr int kDeviceUnavailable = 68;
constexpr int kLevel = Qt::UserRole;
constexpr int kIndent = 12; // pixels for each level
// pixels; the icons of open and closed folders differ in size in some styles
constexpr int kIcon = 16;

class IndentedRow : public CutTips {
public:
    using CutTips::CutTips;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyleOptionViewItem indented = option;
        indented.rect.setLeft(option.rect.left() + indentOf(index));
        CutTips::paint(painter, indented, index);
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return CutTips::sizeHint(option, index) + QSize(indentOf(index), 0);
    }

private:
    static int indentOf(const QModelIndex& index) { return index.data(kLevel).toInt() * kIndent; }
};

// The folder as the list holds it: absolute, without a trailing separator.
Path wholePath(const Path& folder)
{
    const Path whole = std::filesystem::absolute(folder);
    return whole.has_filename() ? whole : whole.parent_path();
}

bool comesBefore(const Text& a, const Text& b)
{
    const int order = compareText(a, b, Compare::TextMode);
    // Names that are equal in text mode are ordered by code units.
    return order != 0 ? order < 0 : a < b;
}

// A name that isn't valid text can't be passed on, so it isn't offered.
bool isShown(const std::string& name)
{
    return !name.starts_with('.') && toUtf8(fromUtf8(name)) == name;
}

std::vector<Text> shownFolders(const Path& folder)
{
    std::vector<std::string> names;
    try {
        names = folderNames(folder);
    } catch (const std::system_error&) {
        return {}; // as on the classic platform; the user can still leave the folder
    }
    std::vector<Text> shown;
    for (const std::string& name : names)
        if (isShown(name)) shown.push_back(fromUtf8(name));
    std::sort(shown.begin(), shown.end(), comesBefore);
    return shown;
}

}

DriveListBox::DriveListBox(Container container, TextView name) : ControlOf(container, name)
{
    const QIcon icon = style()->standardIcon(QStyle::SP_DriveHDIcon);
    for (const std::string& folder : volumeFolders())
        addItem(icon, toQt(fromUtf8(folder)));
    connect(this, &QComboBox::currentIndexChanged, this, &DriveListBox::Change);
}

Text DriveListBox::Drive() const
{
    return fromQt(currentText());
}

void DriveListBox::setDrive(TextView drive)
{
    const int index = findText(toQt(drive), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < 0)
        throw RuntimeError(kDeviceUnavailable, u"デバイスが準備されていません。", nullptr);
    setCurrentIndex(index);
}

DirListBox::DirListBox(Container container, TextView name) : ControlOf(container, name)
{
    setItemDelegate(new IndentedRow(this));
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setIconSize({kIcon, kIcon});
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
}

void DirListBox::setPath(TextView path)
{
    const auto found = existingPath(path);
    if (!folderExists(found)) throw RuntimeError(76);
    // The list is filled even if the path is unchanged: its folders may have
    // changed.
    const Text before = std::exchange(path_, pathText(wholePath(found)));
    fill();
    if (path_ != before) emit Change();
}

void DirListBox::fill()
{
    clear();
    folders_.clear();
    addLevels();
    const int own = count() - 1;
    addFoldersWithin();
    setCurrentRow(own);
    scrollToItem(item(own), PositionAtTop);
}

void DirListBox::addLevels()
{
    const auto path = nativePath(path_);
    auto folder = path.root_path();
    addRow(pathText(folder), pathText(folder), 0, true);
    for (const auto& name : path.relative_path()) {
        folder /= name;
        addRow(pathText(name), pathText(folder), count(), true);
    }
}

void DirListBox::addFoldersWithin()
{
    const int level = count();
    for (const Text& name : shownFolders(nativePath(path_)))
        addRow(name, joinPath(path_, name), level, false);
}

void DirListBox::addRow(const Text& name, const Text& folder, int level, bool opened)
{
    auto* row = new QListWidgetItem(toQt(name), this);
    row->setIcon(style()->standardIcon(opened ? QStyle::SP_DirOpenIcon : QStyle::SP_DirIcon));
    row->setData(kLevel, level);
    folders_.push_back(folder);
}

// If a folder has been removed since the list was read, the list is read again.
void DirListBox::open(int row)
{
    if (row < 0) return;
    const Text folder = folders_[static_cast<std::size_t>(row)];
    if (folderExists(nativePath(folder)))
        setPath(folder);
    else if (folderExists(nativePath(path_)))
        fill();
}

void DirListBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) open(indexAt(event->position().toPoint()).row());
}

void DirListBox::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return open(currentRow());
    QListWidget::keyPressEvent(event);
}

}
