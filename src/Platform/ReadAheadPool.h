#pragma once

#include "Platform/BriefMutex.h"
#include "Platform/FileSystem.h"
#include "Platform/ReadAhead.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morlaine {

/// The folders of one walk that somebody has begun to list, and the helper threads that list them ahead of it. Kept
/// alive by the folders of the walk and by each helper. The walk is one thread at a time.
class ReadAheadPool : public std::enable_shared_from_this<ReadAheadPool> {
public:
    /// The folders in a listing that the walk will enter, in its order.
    class Names {
    public:
        /// Without any, the memory is kept.
        void clear() noexcept
        {
            m_text.clear();
            m_next = 0;
            m_count = 0;
        }
        void append(std::string_view name)
        {
            m_text += name;
            m_text += '\0';
            ++m_count;
        }
        [[nodiscard]] std::size_t count() const { return m_count; }
        [[nodiscard]] std::size_t bytes() const { return m_text.size(); }
        /// Valid while these names live, wherever they are moved as a whole.
        [[nodiscard]] std::string_view first() const { return {m_text.data() + m_next}; }
        void dropFirst()
        {
            m_next += first().size() + 1;
            --m_count;
        }

    private:
        std::string m_text;
        std::size_t m_next = 0;
        std::size_t m_count = 0;
    };

    /// A folder between the moment somebody begins to list it and the moment the walk leaves it.
    struct Branch {
        enum class State {
            untried, // or in vain, by a helper
            reading, // ahead of the walk
            ready,
        };

        Branch* parent = nullptr;
        std::string name;
        std::unique_ptr<Folder> folder; // null when listed and no folder in it will be entered
        std::string path;               // as much of it as the rules look at
        State state = State::untried;
        bool isWanted = false;                       // the walk waits for it
        bool isApart = false;                        // nothing in it is read ahead
        std::chrono::steady_clock::time_point since; // when a helper began to list it
        FolderContents contents;                     // while ready
        std::size_t bytes = 0;                       // held for the walk

        Names subfolders;             // that nobody has begun to list
        Branch* firstBegun = nullptr; // those before `subfolders` that the walk has not come to
        Branch* lastBegun = nullptr;
        Branch* nextBegun = nullptr; // beside this one

        std::list<Branch*> outOfOrder{this}; // the element that stands for this one, while it is not in the order
        std::list<Branch*>::iterator place = outOfOrder.begin();
        std::list<Branch>::iterator self;

        // Only for the walk.
        bool isTaken = false;    // listed, by whomever
        std::size_t toEnter = 0; // once it is taken: the folders in it that the walk has not come to
    };

    /// A folder of the walk: one in the folder `parent`, or the top.
    struct Place {
        Branch* parent = nullptr;
        std::string name;
        Branch* branch = nullptr; // null until the walk needs it
    };

    ReadAheadPool(std::unique_ptr<Folder> top, std::string path, ReadAheadRules rules, std::size_t helpers);
    ~ReadAheadPool();
    ReadAheadPool(const ReadAheadPool&) = delete;
    ReadAheadPool& operator=(const ReadAheadPool&) = delete;

    // For the walk.

    [[nodiscard]] Branch& top() { return m_branches.back(); }

    /// As `Folder::list`; takes what a helper has read where there is that.
    [[nodiscard]] bool list(Place& place, FolderContents& contents, const std::stop_token& stop,
                            const ListingPace& pace);

    /// The branch of a place, which lives until it is left.
    [[nodiscard]] Branch& enter(Place& place);

    /// `branch` is destroyed, unless a helper is still in it.
    void leave(Branch& branch);

    /// Ends the helpers without waiting for them.
    void stop() { m_stop.request_stop(); }

private:
    using Lock = std::unique_lock<BriefMutex>;

    [[nodiscard]] Branch& find(Branch& parent, std::string_view name);
    void leaveUnfinished(Branch& branch);
    static void take(Branch& branch);
    [[nodiscard]] bool listForWalk(Branch& branch, FolderContents& contents, const std::stop_token& stop,
                                   const ListingPace& pace);
    void waitFor(Branch& branch, Lock& lock, const std::stop_token& stop);
    void endReadingAhead(const std::stop_token& stop);

    void help();
    void callHelper();
    void startHelper() noexcept;
    [[nodiscard]] Branch* beginNext();
    [[nodiscard]] Branch& begin(Branch& parent, bool isAhead);
    [[nodiscard]] Branch& add(Branch& parent, std::string_view name);
    [[nodiscard]] static Folder& folderOf(Branch& branch);
    void readAhead(Branch& branch, Lock& lock, const std::stop_token& stop, bool mayPause);
    [[nodiscard]] bool countAsHeld(const Branch& branch, std::size_t& counted, std::size_t bytes, bool mayPause);
    void findSubfolders(const Branch& branch, const FolderContents& contents, Names& names) const;
    void setPath(std::string& path, const Branch& branch, std::string_view name) const;
    void takeOutOfOrder(Branch& branch);
    void hold(std::size_t bytes);
    void release(std::size_t bytes);

    const ReadAheadRules m_rules;
    const std::size_t m_mostHelpers;
    std::stop_source m_stop;

    BriefMutex m_mutex; // for all below, and for branches but what a reader of theirs touches
    std::condition_variable_any m_walkWaits;
    std::condition_variable_any m_helpersWait;
    std::list<Branch> m_branches; // newest first, so that the folders in a folder are destroyed before it
    std::list<Branch> m_spareBranches;
    std::list<Branch*> m_order; // those with folders that nobody has begun to list, and those being read ahead
    std::vector<FolderContents> m_spareContents;
    std::size_t m_notBegun = 0; // names in all branches
    std::size_t m_bytesAhead = 0;
    std::size_t m_helpers = 0;
    std::size_t m_idleHelpers = 0;
    std::size_t m_readers = 0;
    bool m_isFull = false;   // until half of it is gone
    bool m_hasEnded = false; // descriptors have run out: the walk goes on alone

    // Only for the walk.
    Branch* m_left = nullptr; // the last that was left and is still in `m_branches`; the others by `nextBegun`
    bool m_isAbandoned = false;
};

} // namespace morlaine
