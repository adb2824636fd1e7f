#include "Platform/ReadAheadPool.h"

#include "Platform/Background.h"
#include "Platform/Waits.h"

#include <algorithm>
#include <functional>
#include <new>

namespace morlaine {

namespace {

constexpr std::size_t bytesOfBranch = 512; // with its folder, without names
constexpr std::size_t mostSpareContents = 512;
constexpr std::size_t listingsPerSample = 4; // asking how often a thread has waited costs a hundredth of a listing
constexpr std::chrono::milliseconds longListing{100};
constexpr std::chrono::milliseconds patienceForDescriptors{100};

} // namespace

ReadAheadPool::ReadAheadPool(std::unique_ptr<Folder> top, std::string path, ReadAheadRules rules, std::size_t helpers)
    : m_rules(std::move(rules))
    , m_limits(helpers)
{
    Branch& branch = m_branches.emplace_front();
    branch.self = m_branches.begin();
    branch.folder = std::move(top);
    branch.path = std::move(path);
    branch.path.resize(std::min(branch.path.size(), m_rules.decisiveLength));
}

ReadAheadPool::~ReadAheadPool()
{
    while (!m_branches.empty()) {
        m_branches.pop_front();
    }
}

bool ReadAheadPool::list(Place& place, FolderContents& contents, const std::stop_token& stop, const ListingPace& pace)
{
    Lock lock(m_mutex);
    for (; m_left != nullptr; m_left = m_left->nextBegun) {
        m_spareBranches.splice(m_spareBranches.begin(), m_branches, m_left->self);
    }
    if (place.branch == nullptr) {
        place.branch = &find(*place.parent, place.name);
    }
    Branch& branch = *place.branch;
    waitFor(branch, lock, stop);
    if (stop.stop_requested()) {
        return false;
    }
    if (branch.state == Branch::State::ready) {
        std::swap(contents, branch.contents);
        branch.isTaken = true;
        if (m_spareContents.size() < mostSpareContents) {
            m_spareContents.push_back(std::move(branch.contents));
        }
        release(std::exchange(branch.bytes, 0));
        callHelper();
        return true;
    }
    if (m_limits.makeRoom()) { // nobody has read this folder: what is held is far ahead
        m_helpersWait.notify_all();
    }
    lock.unlock();
    return listForWalk(branch, contents, stop, pace);
}

/// While a helper reads the branch, the walk lists other folders, unless the helper seems to hang.
void ReadAheadPool::waitFor(Branch& branch, Lock& lock, const std::stop_token& stop)
{
    while (branch.state == Branch::State::reading && !stop.stop_requested()) {
        if (!std::exchange(branch.isWanted, true) && m_limits.isFull()) {
            m_helpersWait.notify_all(); // the helper of this branch may be paused
        }
        Branch* const next = std::chrono::steady_clock::now() - branch.since < longListing ? beginNext() : nullptr;
        if (next != nullptr) {
            readAhead(*next, lock, stop, false);
        } else {
            m_walkWaits.wait(lock, stop, [&branch] { return branch.state != Branch::State::reading; });
        }
    }
}

bool ReadAheadPool::listForWalk(Branch& branch, FolderContents& contents, const std::stop_token& stop,
                                const ListingPace& pace)
{
    bool isListed = folderOf(branch).list(contents, stop, pace);
    if (!isListed && branch.folder->lackedDescriptors() && branch.parent != nullptr) {
        endReadingAhead(stop);
        branch.folder.reset();
        contents.clear();
        isListed = folderOf(branch).list(contents, stop, pace);
    }
    if (!isListed) {
        return false;
    }
    Names subfolders;
    if (!branch.isApart) {
        findSubfolders(branch, contents, subfolders);
    }
    if (subfolders.count() == 0) {
        branch.isTaken = true;
        return true;
    }
    const Lock lock(m_mutex);
    branch.isTaken = true;
    branch.toEnter = subfolders.count();
    branch.subfolders = std::move(subfolders);
    m_notBegun += branch.toEnter;
    m_order.splice(m_order.begin(), branch.outOfOrder); // the nearest place to the walk
    callHelper();
    return true;
}

/// Waits a moment until all helpers have closed their folders; one may hang.
void ReadAheadPool::endReadingAhead(const std::stop_token& stop)
{
    Lock lock(m_mutex);
    m_hasEnded = true;
    m_helpersWait.notify_all();
    m_walkWaits.wait_for(lock, stop, patienceForDescriptors, [this] { return m_readers == 0; });
}

ReadAheadPool::Branch& ReadAheadPool::enter(Place& place)
{
    if (place.branch == nullptr) {
        const Lock lock(m_mutex);
        place.branch = &find(*place.parent, place.name);
    }
    return *place.branch;
}

/// The folder of that name in `parent`, to which the walk has come.
ReadAheadPool::Branch& ReadAheadPool::find(Branch& parent, std::string_view name)
{
    if (Branch* const begun = parent.firstBegun; begun != nullptr) {
        if (begun->name == name) {
            parent.firstBegun = begun->nextBegun;
            --parent.toEnter;
            return *begun;
        }
    } else if (parent.subfolders.count() > 0 && parent.subfolders.first() == name) {
        --parent.toEnter;
        return begin(parent, false);
    }
    Branch& branch = add(parent, name);
    branch.isApart = true;
    return branch;
}

/// Needs no lock if all subfolders have been entered: only the walk still refers to the branch.
void ReadAheadPool::leave(Branch& branch)
{
    if (m_isAbandoned) {
        return;
    }
    if (!branch.isTaken || branch.toEnter > 0) {
        leaveUnfinished(branch);
        return;
    }
    branch.folder.reset();
    branch.nextBegun = std::exchange(m_left, &branch);
}

/// If a helper is still in the folder, the walk was cancelled. All folders above then stay alive until the pool is
/// destroyed.
void ReadAheadPool::leaveUnfinished(Branch& branch)
{
    std::list<Branch> left;
    const Lock lock(m_mutex);
    m_isAbandoned = branch.state == Branch::State::reading || branch.firstBegun != nullptr;
    if (m_isAbandoned) {
        return;
    }
    takeOutOfOrder(branch);
    m_notBegun -= branch.subfolders.count();
    release(branch.bytes);
    left.splice(left.begin(), m_branches, branch.self);
}

void ReadAheadPool::help()
{
    Lock lock(m_mutex);
    const std::stop_token stop = m_stop.get_token();
    while (!stop.stop_requested()) {
        ++m_idleHelpers;
        const bool mayBegin = hasWork() || m_helpersWait.wait(lock, stop, [this] { return hasWork(); });
        --m_idleHelpers;
        if (mayBegin) {
            readAhead(*beginNext(), lock, stop, true);
        }
    }
}

bool ReadAheadPool::hasWork() const
{
    return m_notBegun > 0 && !m_limits.isFull() && !m_hasEnded && m_helpers - m_idleHelpers < m_limits.helpers();
}

/// Needs two folders: the walk will list the first one itself.
void ReadAheadPool::callHelper()
{
    if (m_notBegun < 2 || !hasWork()) {
        return;
    }
    if (m_idleHelpers > 0) {
        m_helpersWait.notify_one();
    } else {
        startHelper();
    }
}

/// If no thread can be started, the existing ones go on.
void ReadAheadPool::startHelper() noexcept
{
    try {
        const auto work = [self = shared_from_this()] { self->help(); };
        if (!Background::start("read ahead", Background::Priority::userInitiated, work)) {
            ++m_helpers;
        }
    } catch (const std::bad_alloc&) {
        return;
    }
}

/// Begins the nearest folder that nobody has begun to list; null if there is none.
ReadAheadPool::Branch* ReadAheadPool::beginNext()
{
    if (m_limits.isFull() || m_hasEnded || m_notBegun == 0) {
        return nullptr;
    }
    const auto next =
        std::ranges::find_if(m_order, [](const Branch* branch) { return branch->subfolders.count() > 0; });
    return &begin(**next, true);
}

/// Begins the next subfolder of `parent` in the order of the walk.
ReadAheadPool::Branch& ReadAheadPool::begin(Branch& parent, bool isAhead)
{
    Branch& branch = add(parent, parent.subfolders.first());
    if (isAhead) {
        branch.state = Branch::State::reading;
        branch.since = std::chrono::steady_clock::now();
        m_order.splice(parent.place, branch.outOfOrder);
        (parent.firstBegun == nullptr ? parent.firstBegun : parent.lastBegun->nextBegun) = &branch;
        parent.lastBegun = &branch;
    }
    parent.subfolders.dropFirst();
    --m_notBegun;
    if (parent.subfolders.count() == 0) {
        takeOutOfOrder(parent);
    }
    return branch;
}

ReadAheadPool::Branch& ReadAheadPool::add(Branch& parent, std::string_view name)
{
    if (m_spareBranches.empty()) {
        m_spareBranches.emplace_front();
    }
    Branch& branch = m_spareBranches.front();
    branch.parent = &parent;
    branch.name = name;
    m_rules.setPath(branch.path, parent.path, name);
    branch.state = Branch::State::untried;
    branch.isWanted = false;
    branch.isApart = false;
    branch.nextBegun = nullptr;
    branch.isTaken = false;
    branch.toEnter = 0;
    branch.self = m_spareBranches.begin();
    m_branches.splice(m_branches.begin(), m_spareBranches, branch.self);
    return branch;
}

/// Opens the folder if it is not kept; its ancestors are kept or opened the same way. Folders without subfolders to
/// enter are not kept.
Folder& ReadAheadPool::folderOf(Branch& branch)
{
    if (branch.folder == nullptr) {
        branch.folder = folderOf(*branch.parent).folder(branch.name);
    }
    return *branch.folder;
}

/// Lists `branch` with the lock released.
void ReadAheadPool::readAhead(Branch& branch, Lock& lock, const std::stop_token& stop, bool mayPause)
{
    FolderContents contents;
    if (!m_spareContents.empty()) {
        contents = std::move(m_spareContents.back());
        m_spareContents.pop_back();
        contents.clear();
    }
    Names subfolders = std::move(branch.subfolders);
    ++m_readers;
    const bool isSample = ++m_begun % listingsPerSample == 0;
    lock.unlock();
    std::int64_t waits = isSample ? waitsOfThisThread() : 0;
    std::size_t counted = 0;
    bool isListed = false;
    try {
        const auto pace = [&](const FolderContents& soFar) {
            const std::int64_t before = waitsOfThisThread();
            const bool goesOn = countAsHeld(branch, counted, soFar.bytes(), mayPause);
            waits += waitsOfThisThread() - before;
            return goesOn;
        };
        isListed = folderOf(branch).list(contents, stop, std::ref(pace));
        if (isListed) {
            findSubfolders(branch, contents, subfolders);
        }
    } catch (...) { // the walk will list the folder again and meet the error
        isListed = false;
    }
    const bool hasSlept = isSample && waitsOfThisThread() > waits;
    const bool lacksDescriptors = !isListed && branch.folder != nullptr && branch.folder->lackedDescriptors();
    if (!isListed || subfolders.count() == 0) {
        branch.folder.reset();
    }
    lock.lock();
    --m_readers;
    release(counted);
    m_hasEnded = m_hasEnded || lacksDescriptors;
    if (isSample) {
        m_limits.noteListing(hasSlept);
    }
    if (isListed) {
        branch.bytes = bytesOfBranch + contents.bytes() + subfolders.bytes();
        m_limits.hold(branch.bytes);
        branch.contents = std::move(contents);
        branch.subfolders = std::move(subfolders);
        branch.toEnter = branch.subfolders.count();
        m_notBegun += branch.toEnter;
    }
    branch.state = isListed ? Branch::State::ready : Branch::State::untried;
    if (branch.subfolders.count() == 0) {
        takeOutOfOrder(branch);
    } else {
        callHelper();
    }
    if (branch.isWanted || m_hasEnded) {
        m_walkWaits.notify_all();
    }
}

/// Accounts for the memory of a listing; `counted` is what was counted so far. Returns false to end the listing. If too
/// much memory is held, a helper waits; the walk, for which the helpers would wait, gives up.
bool ReadAheadPool::countAsHeld(const Branch& branch, std::size_t& counted, std::size_t bytes, bool mayPause)
{
    Lock lock(m_mutex);
    m_limits.hold(bytes - std::exchange(counted, bytes));
    const auto mayGoOn = [this, &branch] { return branch.isWanted || (!m_limits.isFull() && !m_hasEnded); };
    if (!mayPause) {
        return mayGoOn();
    }
    const std::stop_token stop = m_stop.get_token();
    m_helpersWait.wait(lock, stop, [&] { return mayGoOn() || m_hasEnded; });
    return !stop.stop_requested() && mayGoOn();
}

void ReadAheadPool::findSubfolders(const Branch& branch, const FolderContents& contents, Names& names) const
{
    names.clear();
    std::string path;
    for (std::size_t i = 0; i < contents.size(); ++i) {
        if (!contents.isDirectory(i)) {
            continue;
        }
        const auto [name, values] = contents[i];
        m_rules.setPath(path, branch.path, name);
        if (m_rules.mayEnter(path, *values)) {
            names.append(name);
        }
    }
}

void ReadAheadPool::takeOutOfOrder(Branch& branch)
{
    if (branch.outOfOrder.empty()) {
        branch.outOfOrder.splice(branch.outOfOrder.begin(), m_order, branch.place);
    }
}

void ReadAheadPool::release(std::size_t bytes)
{
    if (m_limits.release(bytes)) {
        m_helpersWait.notify_all();
    }
}

} // namespace morlaine
