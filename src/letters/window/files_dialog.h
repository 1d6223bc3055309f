// Which files are searched: the archive, its backups, archives of older versions, copies,
// and any other file or folder.
#pragma once
#include "letters/library.h"

#include <QDialog>

class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace tolvek {

class FilesDialog : public QDialog {
    Q_OBJECT
public:
    // folder: the archive's; library: what is shown now, with each file's state.
    FilesDialog(const std::filesystem::path& folder, const Library& library,
                QWidget* parent = nullptr);

    // The ticked ones, in the order of precedence.
    std::vector<ArchiveFile> files() const;

private:
    void build();
    void addGroup(const QString& title, const std::vector<ArchiveFile>& files,
                  const Library& library, bool expanded);
    void addFile(QTreeWidgetItem& group, const ArchiveFile& file, const QString& state,
                 bool ticked);
    void addChosen(const QStringList& paths);
    void enableOk();

    std::vector<ArchiveFile> listed_;
    QTreeWidget* tree_ = nullptr;
    QTreeWidgetItem* chosen_ = nullptr; // the group of files named by the user
    QPushButton* ok_ = nullptr;
};

QString stateText(const ArchiveStatus& status);

}
