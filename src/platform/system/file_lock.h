// A lock that keeps programs apart, on a file made for it.
//
// It is taken once, without waiting, and held while the object lives; it goes
// with the process, however that ends. Two locks on one file exclude each other
// wherever they were taken: in one process, in two sessions, by two users, on two
// hosts. Network file systems pass the lock on to their server. The paths by which
// the file is reached don't count, only the file. A program that is started
// doesn't inherit the lock.
//
// The file's contents don't count. One that is made here is empty, and stays: to
// remove it would let two programs lock two files of one name. Whoever may write in its folder
// may lock it, nobody else.
#pragma once
#include <cstdint>
#include <filesystem>

namespace tolvek {

class FileLock {
public:
    enum class Missing { Make, Leave }; // a file that isn't there
    FileLock() = default;               // on nothing
    explicit FileLock(const std::filesystem::path& path, Missing missing = Missing::Make);
    ~FileLock();
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;

    // Another lock is on the file. False where no lock can be had at all: in a
    // folder that can't be written, on a file system without locks.
    bool isHeldElsewhere() const { return heldElsewhere_; }
    bool isHeld() const { return handle_ != kNone; }

private:
    static constexpr std::intptr_t kNone = -1;
    std::intptr_t handle_ = kNone;
    bool heldElsewhere_ = false;
};

}
