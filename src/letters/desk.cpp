#include "letters/desk.h"

#include "app/guard.h"
#include "letters/archive_stamps.h"
#include "letters/letter_reader.h"
#include "store/archive_tables.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace tolvek {

namespace {

constexpr int kBeingWritten = 3356;

// A file and what was read of it.
struct Shelf {
    Library::Source source;
    Stamps stamps; // before it was read
    bool isToBeRead = true;
};

}

class Desk::Worker {
public:
    Worker(DeskEvents events, DeskSettings settings)
        : events_(std::move(events)), settings_(std::move(settings)),
          library_(std::make_shared<Library>()), thread_([this] { run(); })
    {
    }
    ~Worker()
    {
        {
            const std::lock_guard lock(mutex_);
            isEnding_ = true;
            ++generation_; // ends a search
        }
        wake_.notify_all();
        thread_.join();
    }

    void show(std::vector<ArchiveFile> files)
    {
        give([&] { wanted_ = std::move(files); });
    }
    void refresh()
    {
        give([&] { isToRefresh_ = true; });
    }
    std::uint64_t find(Request request)
    {
        std::uint64_t generation = 0;
        give([&] {
            request_ = std::move(request);
            generation = ++generation_;
        });
        return generation;
    }

private:
    using Clock = std::chrono::steady_clock;

    template <class Change> void give(const Change& change)
    {
        {
            const std::lock_guard lock(mutex_);
            change();
        }
        wake_.notify_all();
    }

    void run()
    {
        registerArchiveTables();
        std::unique_lock lock(mutex_);
        while (!isEnding_) {
            if (takeOrders(lock)) continue;
            if (Shelf* const shelf = nextShelf()) {
                lock.unlock();
                read(*shelf);
                lock.lock();
            } else {
                waitForOrders(lock);
            }
        }
    }

    // Does what the window has asked for. False if there was nothing.
    bool takeOrders(std::unique_lock<std::mutex>& lock)
    {
        if (wanted_)
            return withoutLock(lock, [this, files = takeOut(wanted_)] { showFiles(files); });
        if (std::exchange(isToRefresh_, false))
            return withoutLock(lock, [this] { lookForChanges(); });
        if (request_)
            return withoutLock(lock,
                               [this, request = takeOut(request_), number = generation_.load()] {
                                   current_ = request;
                                   currentGeneration_ = number;
                                   answer();
                               });
        return false;
    }

    template <class Value> static Value takeOut(std::optional<Value>& from)
    {
        Value value = std::move(*from);
        from.reset();
        return value;
    }

    template <class Work>
    static bool withoutLock(std::unique_lock<std::mutex>& lock, const Work& work)
    {
        lock.unlock();
        work();
        lock.lock();
        return true;
    }

    // A file that is being written is looked at again after a while.
    void waitForOrders(std::unique_lock<std::mutex>& lock)
    {
        const auto hasOrder = [this] { return isEnding_ || wanted_ || isToRefresh_ || request_; };
        const bool isWaiting =
            std::any_of(shelves_.begin(), shelves_.end(), [](const Shelf& shelf) {
                return shelf.source.status.state == ReadState::Waiting;
            });
        if (!isWaiting) return wake_.wait(lock, hasOrder);
        const auto nap = std::chrono::milliseconds(settings_.retryMilliseconds);
        if (wake_.wait_for(lock, nap, hasOrder)) return;
        for (Shelf& shelf : shelves_)
            shelf.isToBeRead = shelf.isToBeRead || shelf.source.status.state == ReadState::Waiting;
    }

    Shelf* nextShelf()
    {
        const auto found = std::find_if(shelves_.begin(), shelves_.end(),
                                        [](const Shelf& shelf) { return shelf.isToBeRead; });
        return found == shelves_.end() ? nullptr : &*found;
    }

    static auto placeOf(std::vector<Shelf>& shelves, const std::filesystem::path& path)
    {
        return std::find_if(shelves.begin(), shelves.end(), [&](const Shelf& shelf) {
            return shelf.source.status.file.path == path;
        });
    }

    void showFiles(const std::vector<ArchiveFile>& files)
    {
        std::vector<Shelf> before = std::exchange(shelves_, {});
        for (const ArchiveFile& file : files) {
            if (placeOf(shelves_, file.path) != shelves_.end()) continue; // named twice
            const auto known = placeOf(before, file.path);
            shelves_.push_back(known == before.end() ? Shelf{} : *known);
            shelves_.back().source.status.file = file;
        }
        lookForChanges();
        publish();
    }

    void lookForChanges()
    {
        for (Shelf& shelf : shelves_) {
            const Stamps now = stampsOf(shelf.source.status.file.path);
            if (now != shelf.stamps) shelf.isToBeRead = true;
        }
        if (settings_.cacheFolder.empty() || isOrphansRemoved_) return;
        isOrphansRemoved_ = true;
        if (const auto cache = openCache()) cache->removeOrphans();
    }

    // A cache folder that can't be made is done without.
    std::unique_ptr<LetterCache> openCache() const
    {
        try {
            return std::make_unique<LetterCache>(settings_.cacheFolder);
        } catch (const std::system_error&) {
            return nullptr;
        }
    }

    bool usesCache() const
    {
        std::vector<Stamps> stamps;
        for (const Shelf& shelf : shelves_)
            stamps.push_back(stampsOf(shelf.source.status.file.path));
        return !settings_.cacheFolder.empty() && isLarge(stamps, settings_.mostInMemory);
    }

    void read(Shelf& shelf)
    {
        ArchiveStatus& status = shelf.source.status;
        const ReadState before = status.state;
        shelf.isToBeRead = false;
        shelf.stamps = stampsOf(status.file.path);
        try {
            const auto cache = usesCache() ? openCache() : nullptr;
            auto letters =
                readLetterFile(status.file.path, cache.get(), [this] { return pause(); });
            if (!letters) {
                shelf.isToBeRead = true; // other orders came first
                return;
            }
            shelf.source.letters = std::move(letters);
            status = {status.file, ReadState::Read, shelf.source.letters->rows().size(), 0, {}};
        } catch (const std::exception& failure) {
            take(shelf, asRuntimeError(failure));
        }
        if (status.state != ReadState::Waiting || before != ReadState::Waiting) publishNowAndThen();
    }

    // The letters that were read before stay on display while the file is being written.
    static void take(Shelf& shelf, const RuntimeError& error)
    {
        ArchiveStatus& status = shelf.source.status;
        const bool isWritten = error.number() == kBeingWritten;
        status.state = isWritten ? ReadState::Waiting : ReadState::Failed;
        status.error = error.number();
        status.description = error.description();
        if (isWritten) return;
        shelf.source.letters = nullptr;
        status.letters = 0;
    }

    // Between two stretches of a reading: a search is answered from what is there. False
    // if the reading has to make way for something else.
    bool pause()
    {
        std::unique_lock lock(mutex_);
        if (isEnding_ || wanted_) return false;
        if (request_) takeOrders(lock);
        return !isEnding_ && !wanted_;
    }

    // Files that come out of the cache take less time than a new library.
    void publishNowAndThen()
    {
        constexpr auto kBetween = std::chrono::milliseconds(200);
        if (Clock::now() - published_ >= kBetween || !nextShelf()) publish();
    }

    void publish()
    {
        published_ = Clock::now();
        std::vector<Library::Source> sources;
        for (const Shelf& shelf : shelves_)
            sources.push_back(shelf.source);
        library_ = std::make_shared<Library>(std::move(sources));
        lastFound_.reset();
        if (events_.libraryChanged) events_.libraryChanged(library_);
        if (currentGeneration_ > 0) answer();
    }

    bool isAllRead() const
    {
        return std::all_of(shelves_.begin(), shelves_.end(), [](const Shelf& shelf) {
            return !shelf.isToBeRead && shelf.source.status.state != ReadState::Waiting;
        });
    }

    // What a longer word matches is among what the shorter one matched.
    std::vector<LetterId> search() const
    {
        const auto cancelled = [this] { return generation_ != currentGeneration_; };
        const bool canNarrow = lastFound_ && isNarrower(current_.query, lastQuery_);
        return canNarrow ? matching(*library_, current_.query, *lastFound_, cancelled)
                         : matching(*library_, current_.query, cancelled);
    }

    void answer()
    {
        auto found = search();
        if (generation_ != currentGeneration_) return; // the next request follows
        auto made = std::make_shared<Answer>();
        made->generation = currentGeneration_;
        made->library = library_;
        made->query = current_.query;
        made->results = narrowed(*library_, found, current_.narrowing);
        made->allRead = isAllRead();
        lastFound_ = std::move(found);
        lastQuery_ = current_.query;
        if (events_.answered) events_.answered(std::move(made));
    }

    const DeskEvents events_;
    const DeskSettings settings_;

    // Shared with the window's thread, under the mutex.
    std::mutex mutex_;
    std::condition_variable wake_;
    std::optional<std::vector<ArchiveFile>> wanted_;
    std::optional<Request> request_;
    bool isToRefresh_ = false;
    bool isEnding_ = false;
    std::atomic<std::uint64_t> generation_{0}; // of the newest request

    // The worker thread's own.
    std::vector<Shelf> shelves_;
    std::shared_ptr<const Library> library_;
    Request current_;
    std::uint64_t currentGeneration_ = 0;
    std::optional<std::vector<LetterId>> lastFound_; // without the narrowing
    LetterQuery lastQuery_;
    Clock::time_point published_{};
    bool isOrphansRemoved_ = false;

    std::thread thread_; // last: begins when everything else is there
};

Desk::Desk(DeskEvents events, DeskSettings settings)
    : worker_(std::make_unique<Worker>(std::move(events), std::move(settings)))
{
}

Desk::~Desk() = default;

void Desk::show(std::vector<ArchiveFile> files)
{
    worker_->show(std::move(files));
}

void Desk::refresh()
{
    worker_->refresh();
}

std::uint64_t Desk::find(Request request)
{
    return worker_->find(std::move(request));
}

}
