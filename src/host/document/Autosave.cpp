// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/Autosave.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <set>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/WholeFile.h"
#include "host/frames/Descriptor.h"

namespace host {

namespace {

namespace fs = std::filesystem;

constexpr const char* kLockExtension = ".lock";
constexpr std::size_t kMaxPath = 65536;

fs::path LockOf(fs::path copy) {
    return copy.replace_extension(kLockExtension);
}

// A descriptor whose lock is ours and whose file nobody has removed meanwhile; -1 when there is none.
// The system gives the lock back when the process ends, so it never outlives its program, as a
// number of a process that is written down would.
int OpenLocked(const fs::path& lock, int flags) {
    const int descriptor = ::open(lock.c_str(), O_RDWR | O_CLOEXEC | flags, S_IRUSR | S_IWUSR);
    if (descriptor < 0)
        return -1;
    struct stat status {};
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 && ::fstat(descriptor, &status) == 0 &&
        status.st_nlink > 0)
        return descriptor;
    ::close(descriptor);
    errno = EWOULDBLOCK;
    return -1;
}

bool MakePrivateFolder(const fs::path& folder, std::string& why) {
    std::error_code error;
    if (folder.empty())
        why = "there is no folder for copies of unsaved documents: HOME is not set";
    else if (fs::create_directories(folder, error); fs::is_directory(folder, error))
        fs::permissions(folder, fs::perms::owner_all, error);
    else
        why = folder.string() + ": the folder cannot be made: " + error.message();
    return why.empty();
}

fs::path EnvironmentPath(const char* name) {
    const auto* value = std::getenv(name);
    fs::path const path(value ? value : "");
    return path.is_absolute() ? path : fs::path();
}

// Of those that have a copy, a lock or both.
std::set<fs::path> CopiesIn(const fs::path& folder) {
    std::set<fs::path> copies;
    std::error_code error;
    for (fs::directory_iterator at(folder, error); !error && at != fs::directory_iterator();
         at.increment(error)) {
        auto path = at->path();
        if (path.extension() == Document::kExtension || path.extension() == kLockExtension)
            copies.insert(path.replace_extension(Document::kExtension));
    }
    return copies;
}

} // namespace

fs::path AutosaveFolder() {
    auto state = EnvironmentPath("XDG_STATE_HOME");
    if (const auto home = EnvironmentPath("HOME"); state.empty() && !home.empty())
        state = home / ".local/state";
    return state.empty() ? state : state / "telop/autosave";
}

// AutosavePlace ----------------------------------------------------------------------------------

AutosavePlace::AutosavePlace(fs::path copy, int lock) : m_copy(std::move(copy)), m_lock(lock) {}

AutosavePlace::~AutosavePlace() {
    std::error_code ignored;
    // Without a copy nobody would ever look for the lock's file.
    if (!m_removed && !fs::exists(m_copy, ignored))
        Remove();
    ::close(m_lock);
}

std::unique_ptr<AutosavePlace> AutosavePlace::Make(const fs::path& folder, std::string& why) {
    why.clear();
    if (!MakePrivateFolder(folder, why))
        return nullptr;
    for (int i = 1;; ++i) {
        const auto copy = folder / (std::to_string(::getpid()) + "-" + std::to_string(i) +
                                    std::string(Document::kExtension));
        if (const int lock = OpenLocked(LockOf(copy), O_CREAT | O_EXCL); lock >= 0)
            return std::unique_ptr<AutosavePlace>(new AutosavePlace(copy, lock));
        // Somebody looks at it, or a program of the same number left it.
        if (errno == EEXIST || errno == EWOULDBLOCK)
            continue;
        why = LockOf(copy).string() + ": cannot be written: " + ErrorText(errno);
        return nullptr;
    }
}

std::unique_ptr<AutosavePlace> AutosavePlace::TakeOver(const fs::path& copy) {
    const int lock = OpenLocked(LockOf(copy), O_CREAT);
    if (lock < 0)
        return nullptr;
    // The lock first, then the look: its program may have removed both in between.
    std::unique_ptr<AutosavePlace> place(new AutosavePlace(copy, lock));
    std::error_code ignored;
    if (!fs::exists(copy, ignored))
        place = nullptr;
    return place;
}

fs::path AutosavePlace::Original() const {
    std::string why;
    const auto bytes = ReadWholeFile(LockOf(m_copy), kMaxPath, why);
    return bytes ? fs::path(std::string(bytes->begin(), bytes->end())) : fs::path();
}

bool AutosavePlace::SetOriginal(const fs::path& original, std::string& why) {
    const auto& path = original.native();
    int error = ::ftruncate(m_lock, 0) == 0 && ::lseek(m_lock, 0, SEEK_SET) == 0 ? 0 : errno;
    if (error == 0)
        error =
            WriteAll(m_lock, { reinterpret_cast<const std::uint8_t*>(path.data()), path.size() });
    if (error != 0)
        why = LockOf(m_copy).string() + ": cannot be written: " + ErrorText(error);
    return error == 0;
}

void AutosavePlace::Remove() {
    m_removed = true;
    std::error_code ignored;
    fs::remove(m_copy, ignored);
    fs::remove(LockOf(m_copy), ignored);
}

// Autosave ---------------------------------------------------------------------------------------

Autosave::Autosave(fs::path folder) : m_folder(std::move(folder)) {}

Autosave::~Autosave() {
    Forget();
}

bool Autosave::Keep(const Document& document, const fs::path& original, std::string& why) {
    if (!m_place)
        m_place = AutosavePlace::Make(m_folder, why);
    if (!m_place)
        return false;
    const auto path = original.empty() ? original : fs::absolute(original);
    return (m_place->Original() == path || m_place->SetOriginal(path, why)) &&
           document.Save(m_place->Copy(), why);
}

void Autosave::Forget() {
    if (m_place)
        m_place->Remove();
    m_place = nullptr;
}

// LeftCopy ---------------------------------------------------------------------------------------

std::vector<LeftCopy> LeftCopy::Find(const fs::path& folder) {
    std::vector<LeftCopy> found;
    for (const auto& copy : CopiesIn(folder)) {
        // A lock without a copy is tidied up by that.
        auto place = AutosavePlace::TakeOver(copy);
        std::error_code ignored;
        if (place)
            found.push_back(LeftCopy(std::move(place), fs::last_write_time(copy, ignored)));
    }
    std::sort(found.begin(), found.end(),
              [](const LeftCopy& a, const LeftCopy& b) { return a.m_savedAt < b.m_savedAt; });
    return found;
}

std::optional<Document> LeftCopy::Load(std::string& why) const {
    return Document::Load(m_place->Copy(), why);
}

} // namespace host
