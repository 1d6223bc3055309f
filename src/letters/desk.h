// The worker thread behind the window: it reads the archives and searches them.
//
// The database engine is used by this thread alone. Everything that it reads is in memory
// (or in a cache file) when it has been read; the archives are then closed and not locked,
// so the main program works as if nobody read them.
//
// The calls return at once. The events come in the worker thread, never after the
// destructor; a window passes them on to its own thread. An archive that is being written
// is Waiting and is tried again until it can be read.
#pragma once
#include "letters/archive_stamps.h"
#include "letters/library.h"
#include "letters/search.h"

#include <cstdint>
#include <filesystem>

namespace tolvek {

struct Request {
    LetterQuery query;
    Narrowing narrowing;
};

// The answer to the newest request. It comes once for each request that isn't overtaken by
// the next one, and again whenever the library changes.
struct Answer {
    std::uint64_t generation = 0; // what find() returned
    std::shared_ptr<const Library> library;
    LetterQuery query;
    Results results;
    bool allRead = false; // no file is Unread or Waiting
};

struct DeskEvents {
    // When files have been read, at most every 200 ms; when a file's state changes.
    std::function<void(std::shared_ptr<const Library>)> libraryChanged;
    std::function<void(std::shared_ptr<const Answer>)> answered;
};

struct DeskSettings {
    // Where the texts of large archives lie in mapped files; empty: always in memory.
    std::filesystem::path cacheFolder = letterCacheFolder();
    std::uint64_t mostInMemory = kMostInMemory;
    // Between two looks at an archive that is being written.
    int retryMilliseconds = 500;
};

class Desk {
public:
    explicit Desk(DeskEvents events, DeskSettings settings = {});
    ~Desk(); // stops a search or a read at its next row and waits for the thread
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    // Shows these files from now on. Files that are shown already aren't read again.
    void show(std::vector<ArchiveFile> files);
    // Reads files again that have changed since. Cheap when none has; call it when the
    // window becomes active.
    void refresh();
    // Starts a search; an unfinished one ends. Returns its generation, from 1.
    std::uint64_t find(Request request);

private:
    class Worker;
    std::unique_ptr<Worker> worker_;
};

}
