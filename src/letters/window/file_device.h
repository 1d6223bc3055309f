// A file as the toolkit writes to it, by the program's own file operations: the probe is
// asked, and a failure keeps its system error.
#pragma once
#include "platform/system/files.h"

#include <QIODevice>

#include <exception>

namespace tolvek {

class FileDevice : public QIODevice {
    Q_OBJECT
public:
    // Throws std::system_error if the file can't be made.
    explicit FileDevice(const std::filesystem::path& path);

    // Closes the file; throws the first failure of a write. No exception may pass through
    // the toolkit, so it comes only here.
    void finish();

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* bytes, qint64 size) override;

private:
    OpenFile file_;
    std::exception_ptr failure_;
};

}
