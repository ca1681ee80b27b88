// SPDX-License-Identifier: BSD-3-Clause
// A copy of unsaved work that outlives a crash, and the copies that crashed programs left.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/document/Document.h"

namespace host {

// Where copies lie: $XDG_STATE_HOME/telop/autosave, else ~/.local/state/telop/autosave. Empty when
// there is no home.
std::filesystem::path AutosaveFolder();

// A place for a copy, which no other program touches while this one lives: its lock goes with the
// process, however that ends.
class AutosavePlace {
public:
    // Makes a new one. Null with the reason. The folder is made where it is missing.
    static std::unique_ptr<AutosavePlace> Make(const std::filesystem::path& folder,
                                               std::string& why);
    // Takes a place over from a program that is gone. Null when one lives, or there is no copy.
    static std::unique_ptr<AutosavePlace> TakeOver(const std::filesystem::path& copy);
    AutosavePlace(const AutosavePlace&) = delete;
    AutosavePlace& operator=(const AutosavePlace&) = delete;
    // What was not removed is left for the next program.
    ~AutosavePlace();

    const std::filesystem::path& Copy() const { return m_copy; }
    // The path of the document that the copy is of; empty for an untitled one.
    std::filesystem::path Original() const;
    bool SetOriginal(const std::filesystem::path& original, std::string& why);
    // The copy and all that belongs to it.
    void Remove();

private:
    AutosavePlace(std::filesystem::path copy, int lock);

    std::filesystem::path m_copy;
    int m_lock; // open and locked
    bool m_removed = false;
};

// Keeps the copy of one document. One for each document that is open; user-interface thread.
class Autosave {
public:
    explicit Autosave(std::filesystem::path folder = AutosaveFolder());
    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;
    // The document is closed as its user wished: no copy stays.
    ~Autosave();

    // Replaces the copy. original: the document's path, empty while it has none. False with the
    // reason; the copy before stays then.
    bool Keep(const Document& document, const std::filesystem::path& original, std::string& why);
    // The document was saved, or its changes were given up.
    void Forget();

private:
    std::filesystem::path m_folder;
    std::unique_ptr<AutosavePlace> m_place;
};

// A copy that a program left which is gone. While this lives no other program takes it.
class LeftCopy {
public:
    // Oldest first.
    static std::vector<LeftCopy> Find(const std::filesystem::path& folder = AutosaveFolder());

    std::filesystem::path Original() const { return m_place->Original(); } // empty: untitled
    std::filesystem::file_time_type SavedAt() const { return m_savedAt; }
    // As Document::Load. The copy stays until Remove, or is found again by a later program.
    std::optional<Document> Load(std::string& why) const;
    void Remove() { m_place->Remove(); }

private:
    LeftCopy(std::unique_ptr<AutosavePlace> place, std::filesystem::file_time_type savedAt)
        : m_place(std::move(place)), m_savedAt(savedAt) {}

    std::unique_ptr<AutosavePlace> m_place;
    std::filesystem::file_time_type m_savedAt;
};

} // namespace host
