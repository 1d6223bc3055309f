// The drive list and the directory list.
//
// Where there are no drives the drive list holds the folders at which a user's
// folders begin (the root first). Setting Drive or Path by code fires Change
// like the user's choice does, if the value changes.
#pragma once
#include "platform/forms/control.h"

#include <QComboBox>
#include <QListWidget>

#include <vector>

namespace tolvek {

class DriveListBox : public ControlOf<QComboBox> {
    Q_OBJECT
public:
    DriveListBox(Container container, TextView name); // the first one is selected
    Text Drive() const;            // the volume's folder, as it can be given to a directory list
    void setDrive(TextView drive); // not in the list: error 68

signals:
    void Change();
};

// The folders from the root down to Path, then those within Path by name, each
// level indented. A double click or Enter on one makes it the Path; a single
// click only marks it. Hidden folders aren't shown, unless they lead to Path,
// and a folder that can't be read shows nothing below it.
class DirListBox : public ControlOf<QListWidget> {
    Q_OBJECT
public:
    DirListBox(Container container, TextView name);
    const Text& Path() const { return path_; } // without a separator at its end, but for a root
    void setPath(TextView path);               // no such folder: error 76

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

    Text path_;                 // "" until the first setPath
    std::vector<Text> folders_; // of the rows
};

}
