// The drive list and the directory list.
//
// On a system without drives the drive list holds the folders at which a user's
// folders begin, the root first. Setting Drive or Path in code fires Change as the
// user's choice does, if the value changes.
#pragma once
#include "platform/forms/control.h"

#include <QComboBox>
#include <QListWidget>

#include <vector>

namespace tolvek {

class DriveListBox : public ControlOf<QComboBox> {
    Q_OBJECT
public:
    DriveListBox(Container container, TextView name); // the first entry is selected
    Text Drive() const;            // the volume's folder, as a directory list accepts it
    void setDrive(TextView drive); // error 68 if it isn't in the list

signals:
    void Change();
};

// Lists the folders from the root down to Path, then those in Path by name, each
// level indented. A double click or Enter on a folder makes it the Path; a single
// click only selects it. Hidden folders aren't shown unless they lead to Path. A
// folder that can't be read shows nothing below it.
class DirListBox : public ControlOf<QListWidget> {
    Q_OBJECT
public:
    DirListBox(Container container, TextView name);
    const Text& Path() const { return path_; } // without a trailing separator, except for a root
    void setPath(TextView path);               // error 76 if there is no such folder

signals:
    void Change();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void open(int row);
    void fill();
    void addLevels();
    void addFoldersWithin();
    void addRow(const Text& name, const Text& folder, int level, bool opened);

    Text path_;                 // empty until the first setPath
    std::vector<Text> folders_; // the folder of each row
};

}
