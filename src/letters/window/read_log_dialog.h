// 読み込みの記録: what became of each mail of the last reads, as the main program wrote it.
#pragma once
#include "app/read_log.h"

#include <QDialog>

#include <filesystem>

class QPlainTextEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace tolvek {

class ReadLogDialog : public QDialog {
    Q_OBJECT
public:
    // log: TolvekRead.log; a missing or unreadable one is said so.
    explicit ReadLogDialog(const std::filesystem::path& log, QWidget* parent = nullptr);

private:
    void build();
    void fill(const std::vector<ReadRecord>& records);
    void showDetails();

    QTreeWidget* reads_ = nullptr;
    QPlainTextEdit* details_ = nullptr;
};

}
