// SPDX-License-Identifier: BSD-3-Clause
// The document that is open: made, opened, saved, kept for a crash, with the frames that it is about
// and the encoding of its texts. Asks its user what it has to know.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QString>
#include <QTimer>

#include "apps/studio/Preferences.h"
#include "apps/studio/Project.h"
#include "host/document/Autosave.h"
#include "platform/TextContext.h"

class QMenu;
class QWidget;

namespace studio {

class MessageBar;

class DocumentSession {
public:
    // effect may be null; parent is that of questions. All outlive the session, which is the thread's
    // text context from the start.
    DocumentSession(host::Effect* effect, MessageBar& messages, QWidget& parent);

    Project& TheProject() { return m_project; }
    // Of the document's texts. The user sees what it is told.
    const std::shared_ptr<platform::TextContext>& Text() const { return m_text; }
    // Empty while it has none.
    const std::string& File() const { return m_file; }
    // The document's, else that of its frames.
    QString Name() const;

    // Those that can fail return false after a message.
    void New(); // asks nothing
    bool Open(const std::string& file);
    bool Save();
    bool SaveAs();
    bool SaveTo(const std::string& file);
    // A document, pictures, a folder or a pattern, as on the command line.
    bool OpenFiles(const std::vector<std::string>& files);
    bool OpenFrames(const std::string& input);
    void ShowTestCard() { TakeShot(Shot::TestCard()); }
    // What was dropped on the window: as OpenFiles, but one picture brings its sequence.
    void OpenDropped(const std::vector<std::string>& files);

    void AskForDocument();
    void AskForFrames();
    void AskForFolder();
    void AskForPattern();
    // Asks about changes that are not saved. False: the user wants to keep working on them.
    bool MayDiscard();
    void FillRecentMenu(QMenu& menu);
    // The user is done with the document, as its copy is with it.
    void Forget() { m_autosave.Forget(); }

    // Documents that a run of the program which did not end well left behind are offered.
    void OfferRestore(const std::filesystem::path& folder = host::AutosaveFolder());
    // Keeps a copy of unsaved changes; done every 30 seconds.
    void KeepCopy();

    std::function<void()> onShot; // other frames, or another document

private:
    bool Take(const host::Document& document, const std::string& file);
    // Asks, once the window shows, which of a folder's sequences is meant where that is not clear.
    // Null with the reason.
    std::shared_ptr<const Shot> OpenShot(const std::string& input, std::string& why);
    void TakeShot(std::shared_ptr<const Shot> shot);
    bool Restore(host::LeftCopy& copy);
    void OpenPicked(const std::string& file);
    void UseTextsOf(const host::Document& document);
    void Use(std::shared_ptr<platform::TextContext> text);
    bool Complain(const QString& text, const std::string& why); // false
    std::string FolderOfFrames() const;

    MessageBar& m_messages;
    QWidget& m_parent;
    const host::Document m_new; // how a new document wants its texts
    std::shared_ptr<platform::TextContext> m_text;
    std::optional<platform::TextScope> m_scope; // of that
    Project m_project;
    std::string m_file;
    Recent m_recentDocuments { QStringLiteral("recent/documents") };
    Recent m_recentFrames { QStringLiteral("recent/frames") };
    host::Autosave m_autosave;
    QTimer m_autosaveTimer;
};

} // namespace studio
