// A lock between programs, held on a file made for that purpose.
//
// The lock is taken once, without waiting, and held for the lifetime of the object.
// The system releases it when the process ends, however it ends. Two locks on one
// file exclude each other wherever they were taken: in one process, in two
// sessions, by two users or on two hosts (network file systems pass the lock on to
// their server). The file itself counts, not the path by which it is reached. Child
// programs don't inherit the lock.
//
// The file's contents don't matter. A file made here is empty and is never removed:
// after a removal two programs could lock two different files of the same name.
// Only users who may write to the folder may lock the file.
#pragma once
#include <cstdint>
#include <filesystem>

namespace tolvek {

class FileLock {
public:
    enum class Missing { Make, Leave }; // what to do if the file is missing
    FileLock() = default;               // holds no lock
    explicit FileLock(const std::filesystem::path& path, Missing missing = Missing::Make);
    ~FileLock();
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;

    // Another lock is held on the file. False also if no lock can be taken at all:
    // in a folder without write permission, or on a file system without locks.
    bool isHeldElsewhere() const { return heldElsewhere_; }
    bool isHeld() const { return handle_ != kNone; }

private:
    static constexpr std::intptr_t kNone = -1;
    std::intptr_t handle_ = kNone;
    bool heldElsewhere_ = false;
};

}
