#pragma once

#include "Platform/BriefMutex.h"
#include "Platform/FileSystem.h"
#include "Platform/ReadAhead.h"
#include "Platform/ReadAheadLimits.h"

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

/// The begun folders of one walk, and the helper threads that list them ahead of it. Kept alive by the folders of the
/// walk and by the helpers. The walk may use it from one thread at a time.
class ReadAheadPool : public std::enable_shared_from_this<ReadAheadPool> {
public:
    /// Names of the subfolders that the walk will enter, in its order.
    class Names {
    public:
        /// Removes all names; keeps the memory.
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
        /// Valid as long as these names exist, also after they are moved.
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

    /// A folder from the moment when its listing begins until the walk leaves it.
    struct Branch {
        enum class State {
            untried, // not listed; a helper may have failed to
            reading, // by a helper, or by the walk ahead of its place
            ready,
        };

        Branch* parent = nullptr;
        std::string name;
        std::unique_ptr<Folder> folder; // null until it is opened, and if no subfolder will be entered
        std::string path;               // cut to the decisive length
        State state = State::untried;
        bool isWanted = false;                       // the walk waits for it
        bool isApart = false;                        // the rules did not expect it; nothing in it is read ahead
        std::chrono::steady_clock::time_point since; // when a helper began to list it
        FolderContents contents;                     // valid in state `ready`
        std::size_t bytes = 0;                       // memory held for the walk

        Names subfolders;             // not begun yet
        Branch* firstBegun = nullptr; // those before `subfolders` that the walk has not reached
        Branch* lastBegun = nullptr;
        Branch* nextBegun = nullptr; // the next sibling that is begun

        std::list<Branch*> outOfOrder{this}; // holds this branch's list element while it is not in the order
        std::list<Branch*>::iterator place = outOfOrder.begin();
        std::list<Branch>::iterator self;

        // Used by the walk only, once the folder is listed.
        bool isTaken = false;    // the walk has the listing
        std::size_t toEnter = 0; // subfolders that the walk has not reached
    };

    /// A folder of the walk: a subfolder of `parent`, or the top.
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

    /// Like `Folder::list`; returns the listing of a helper if there is one.
    [[nodiscard]] bool list(Place& place, FolderContents& contents, const std::stop_token& stop,
                            const ListingPace& pace);

    /// The branch of a place. Valid until it is left.
    [[nodiscard]] Branch& enter(Place& place);

    /// Destroys `branch`, unless a helper is still in it.
    void leave(Branch& branch);

    /// Stops the helpers without waiting for them.
    void stop() { m_stop.request_stop(); }

private:
    using Lock = std::unique_lock<BriefMutex>;

    [[nodiscard]] Branch& find(Branch& parent, std::string_view name);
    void leaveUnfinished(Branch& branch);
    [[nodiscard]] bool listForWalk(Branch& branch, FolderContents& contents, const std::stop_token& stop,
                                   const ListingPace& pace);
    void waitFor(Branch& branch, Lock& lock, const std::stop_token& stop);
    void endReadingAhead(const std::stop_token& stop);

    void help();
    [[nodiscard]] bool hasWork() const; // for one more helper
    void callHelper();
    void startHelper() noexcept;
    [[nodiscard]] Branch* beginNext();
    [[nodiscard]] Branch& begin(Branch& parent, bool isAhead);
    [[nodiscard]] Branch& add(Branch& parent, std::string_view name);
    [[nodiscard]] static Folder& folderOf(Branch& branch);
    void readAhead(Branch& branch, Lock& lock, const std::stop_token& stop, bool mayPause);
    [[nodiscard]] bool countAsHeld(const Branch& branch, std::size_t& counted, std::size_t bytes, bool mayPause);
    void findSubfolders(const Branch& branch, const FolderContents& contents, Names& names) const;
    void takeOutOfOrder(Branch& branch);
    void release(std::size_t bytes);

    const ReadAheadRules m_rules;
    std::stop_source m_stop;

    BriefMutex m_mutex; // protects all members below, and the branches except what their reader uses
    std::condition_variable_any m_walkWaits;
    std::condition_variable_any m_helpersWait;
    std::list<Branch> m_branches; // newest first: subfolders are destroyed before their parents
    std::list<Branch> m_spareBranches;
    std::list<Branch*> m_order; // branches with folders that are not begun, and those being read ahead
    std::vector<FolderContents> m_spareContents;
    std::size_t m_notBegun = 0; // subfolders in all branches that are not begun
    ReadAheadLimits m_limits;
    std::size_t m_helpers = 0;
    std::size_t m_idleHelpers = 0;
    std::size_t m_begun = 0; // by helpers, and by the walk ahead of its place
    std::size_t m_readers = 0;
    bool m_hasEnded = false; // descriptors ran out: the walk goes on alone

    // Used by the walk only.
    Branch* m_left = nullptr; // the last one left that is still in `m_branches`; leads to the others by `nextBegun`
    bool m_isAbandoned = false;
};

} // namespace morlaine
