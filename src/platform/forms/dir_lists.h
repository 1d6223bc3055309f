// The drive list and the directory list.
//
// Where there are no drives the drive list holds the mounted volumes (the root
// folder first). Setting Drive or Path by code fires Change like the user's
// choice does, if the value changes.
#pragma once
#include "platform/forms/control.h"

#include <QComboBox>
#include <QListWidget>

#include <vector>

namespace tolvek {

class DriveListBox : public ControlOf<QComboBox> {
    Q_OBJECT
public:
    DriveListBox(Container container, TextView name);
    Text Drive() const;            // the volume's folder, as it can be given to a directory list
    void setDrive(TextView drive); // not in the list: error 68

signals:
    void Change();
};

// The folders from the root down to Path, then those within Path, each level
// indented. A double click or Enter on one makes it the Path; a single click
// only marks it. A folder that can't be read shows nothing below it.
class DirListBox : public ControlOf<QListWidget> {
    Q_OBJECT
public:
    DirListBox(Container container, TextView name);
    const Text& Path() const { return path_; } // without a separator at its end, but for a root
    void setPath(TextView path);               // no such folder: error 76

signals:
    void Change();

private:
    Text path_;
    std::vector<Text> folders_; // of the rows
};

}
