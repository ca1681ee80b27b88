// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/DocumentSession.h"

#include <chrono>
#include <system_error>
#include <utility>

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLocale>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

#include "apps/studio/MessageBar.h"
#include "apps/studio/Texts.h"

namespace studio {

namespace {

constexpr std::chrono::seconds kAutosaveInterval { 30 };

bool IsDocument(const std::string& file) {
    return std::filesystem::path(file).extension() == host::Document::kExtension;
}

std::string Absolute(const std::string& path) {
    std::error_code error;
    const auto absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

QString DocumentFilter() {
    return T("Telop documents (*%1)").arg(QLatin1String(host::Document::kExtension));
}

enum class Answer { kYes, kDiscard, kCancel };

Answer Ask(QWidget& parent, const QString& title, const QString& text, const QString& detail,
           const QString& yes, const QString& discard, const QString& cancel) {
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::NoButton, &parent);
    box.setInformativeText(detail);
    const auto* const yesButton = box.addButton(yes, QMessageBox::AcceptRole);
    const auto* const discardButton = box.addButton(discard, QMessageBox::DestructiveRole);
    box.addButton(cancel, QMessageBox::RejectRole);
    box.exec();
    return box.clickedButton() == yesButton       ? Answer::kYes
           : box.clickedButton() == discardButton ? Answer::kDiscard
                                                  : Answer::kCancel;
}

Answer AskAboutCopy(QWidget& parent, const host::LeftCopy& copy) {
    const auto original = copy.Original();
    const auto name = original.empty() ? T("an untitled document")
                                       : QString::fromStdString(original.filename().string());
    const auto when = std::chrono::file_clock::to_sys(copy.SavedAt());
    const auto time = QDateTime::fromSecsSinceEpoch(
        std::chrono::duration_cast<std::chrono::seconds>(when.time_since_epoch()).count());
    return Ask(parent, T("Restore Unsaved Work"),
               T("Telop Studio ended before its work was saved. Restore %1?").arg(name),
               T("The copy was kept on %1.").arg(QLocale().toString(time, QLocale::ShortFormat)),
               T("&Restore"), T("&Throw Away"), T("&Later"));
}

// In the user's encoding and language.
host::Document NewDocument() {
    const auto& users = platform::TextContext::Current();
    host::Document document;
    document.encoding = users.Encoding();
    document.language = users.Language();
    return document;
}

} // namespace

DocumentSession::DocumentSession(host::Effect* effect, MessageBar& messages, QWidget& parent)
    : m_messages(messages), m_parent(parent), m_new(NewDocument()), m_project(effect) {
    UseTextsOf(m_new);
    QObject::connect(&m_autosaveTimer, &QTimer::timeout, &m_autosaveTimer, [this] { KeepCopy(); });
    m_autosaveTimer.start(kAutosaveInterval);
}

// What is being drawn keeps the context that it was asked for in.
void DocumentSession::UseTextsOf(const host::Document& document) {
    const auto tell = [bar = &m_messages](const platform::Report& report) {
        // A text that is lost is the frame's failure, which is shown with the frame.
        if (report.kind == platform::ReportKind::kTextNotDrawn)
            return;
        // It was met on any thread, and perhaps in the middle of a line.
        QMetaObject::invokeMethod(
            bar,
            [bar, kind = report.kind, what = QString::fromStdString(platform::Describe(report))] {
                const auto heading = kind == platform::ReportKind::kBundleBroken
                                         ? T("A file of the text effect cannot be used.")
                                         : T("The text is not drawn to the letter.");
                bar->Show(MessageBar::Kind::kWarning, heading + QLatin1Char('\n') + what);
            },
            Qt::QueuedConnection);
    };
    Use(std::make_shared<platform::TextContext>(document.encoding, tell, document.language,
                                                document.fallbacks));
}

void DocumentSession::Use(std::shared_ptr<platform::TextContext> text) {
    m_scope.reset();
    m_text = std::move(text);
    m_scope.emplace(*m_text);
}

bool DocumentSession::Complain(const QString& text, const std::string& why) {
    m_messages.Show(MessageBar::Kind::kError,
                    text + QLatin1Char('\n') + QString::fromStdString(why));
    return false;
}

QString DocumentSession::Name() const {
    const auto shown = m_file.empty()
                           ? std::filesystem::path(m_project.TheShot()->Input()).filename()
                           : std::filesystem::path(m_file).stem();
    return shown.empty() ? T("Untitled") : QString::fromStdString(shown.string());
}

// Documents

bool DocumentSession::MayDiscard() {
    if (!m_project.IsModified())
        return true;
    const auto answer =
        Ask(m_parent, T("Unsaved Changes"), T("Save the changes of this document?"),
            T("They are lost otherwise."), T("&Save"), T("&Don't Save"), T("Cancel"));
    return answer == Answer::kYes ? Save() : answer == Answer::kDiscard;
}

void DocumentSession::New() {
    Forget();
    m_file.clear();
    UseTextsOf(m_new);
    m_project.Reset();
    onShot();
}

bool DocumentSession::Open(const std::string& given) {
    const auto file = Absolute(given);
    std::string why;
    const auto document = host::Document::Load(file, why);
    if (!document)
        return Complain(T("The document could not be opened."), why);
    if (!Take(*document, file))
        return false;
    Forget();
    m_recentDocuments.Add(QString::fromStdString(file));
    return true;
}

bool DocumentSession::Take(const host::Document& document, const std::string& file) {
    std::string whyNoFrames;
    auto shot = document.input.empty() ? Shot::TestCard() : OpenShot(document.input, whyNoFrames);
    const bool framesAreLost = !shot;
    const bool framesAreOthers = shot && shot->Input() != document.input;
    if (framesAreLost)
        shot = Shot::TestCard();
    const auto before = m_text;
    UseTextsOf(document);
    std::string why;
    if (!m_project.Take(document, std::move(shot), why)) {
        Use(before);
        return Complain(T("The document could not be opened."), why);
    }
    m_file = file;
    if (framesAreOthers)
        m_project.SetModified();
    m_messages.Clear();
    onShot();
    if (framesAreLost)
        m_messages.Show(
            MessageBar::Kind::kWarning,
            T("The document's frames could not be opened, so the test card stands in for them.") +
                QLatin1Char('\n') + QString::fromStdString(whyNoFrames),
            T("&Open Frames…"), [this] { AskForFrames(); });
    return true;
}

bool DocumentSession::SaveTo(const std::string& given) {
    const auto file = Absolute(given);
    std::string why;
    if (!m_project.ToDocument().Save(file, why))
        return Complain(T("The document could not be saved."), why);
    Forget();
    m_file = file;
    m_project.SetUnmodified();
    m_recentDocuments.Add(QString::fromStdString(file));
    return true;
}

bool DocumentSession::Save() {
    return m_file.empty() ? SaveAs() : SaveTo(m_file);
}

bool DocumentSession::SaveAs() {
    QFileDialog dialog(&m_parent, T("Save Document"), {}, DocumentFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QString::fromUtf8(host::Document::kExtension.data() + 1));
    const auto folder =
        m_file.empty() ? FolderOfFrames() : std::filesystem::path(m_file).parent_path().string();
    if (!folder.empty())
        dialog.setDirectory(QString::fromStdString(folder));
    dialog.selectFile(m_file.empty() ? T("Untitled") : QString::fromStdString(m_file));
    return dialog.exec() == QDialog::Accepted &&
           SaveTo(dialog.selectedFiles().front().toStdString());
}

void DocumentSession::AskForDocument() {
    if (!MayDiscard())
        return;
    const auto file = QFileDialog::getOpenFileName(
        &m_parent, T("Open Document"), QString::fromStdString(m_file), DocumentFilter());
    if (!file.isEmpty())
        Open(file.toStdString());
}

// After a crash

void DocumentSession::KeepCopy() {
    std::string why;
    if (m_project.IsModified() && !m_autosave.Keep(m_project.ToDocument(), m_file, why))
        Complain(T("No copy of the unsaved changes could be kept."), why);
}

void DocumentSession::OfferRestore(const std::filesystem::path& folder) {
    for (auto& copy : host::LeftCopy::Find(folder)) {
        const auto answer = AskAboutCopy(m_parent, copy);
        if (answer == Answer::kDiscard)
            copy.Remove();
        // One document at a time: the others are offered by the next run.
        if (answer == Answer::kYes && Restore(copy))
            return;
    }
}

bool DocumentSession::Restore(host::LeftCopy& copy) {
    std::string why;
    const auto document = copy.Load(why);
    if (!document)
        return Complain(T("The copy could not be restored."), why);
    if (!Take(*document, copy.Original().string()))
        return false;
    m_project.SetModified();
    // This run's own copy first: at no time is there none.
    if (m_autosave.Keep(m_project.ToDocument(), m_file, why))
        copy.Remove();
    return true;
}

// Frames

std::string DocumentSession::FolderOfFrames() const {
    return m_project.TheShot()->Folder().string();
}

bool DocumentSession::OpenFiles(const std::vector<std::string>& files) {
    if (files.size() == 1 && IsDocument(files.front()))
        return Open(files.front());
    std::string why;
    const auto input = InputOf(files, why);
    return input ? OpenFrames(*input) : Complain(T("These files cannot be opened together."), why);
}

bool DocumentSession::OpenFrames(const std::string& given) {
    const auto input = Absolute(given);
    std::string why;
    auto shot = OpenShot(input, why);
    if (!shot)
        return Complain(T("The frames could not be opened."), why);
    m_messages.Clear();
    m_recentFrames.Add(QString::fromStdString(shot->Input()));
    TakeShot(std::move(shot));
    return true;
}

std::shared_ptr<const Shot> DocumentSession::OpenShot(const std::string& input, std::string& why) {
    std::vector<std::string> choices;
    auto shot = Shot::Open(input, why, &choices);
    std::vector<std::shared_ptr<const Shot>> shots;
    QStringList names;
    for (const auto& choice : choices) {
        std::string ignored;
        const auto chosen = Shot::Open(choice, ignored);
        if (!chosen)
            continue;
        shots.push_back(chosen);
        names += QStringLiteral("%1 (%2)").arg(
            QString::fromStdString(std::filesystem::path(choice).filename().string()),
            FramesText(static_cast<qint64>(chosen->Count())));
    }
    if (shots.empty() || !m_parent.isVisible())
        return shot;
    bool taken = false;
    const auto name = QInputDialog::getItem(
        &m_parent, T("Open Frames"),
        T("This folder holds more than the frames of one sequence. Which are meant?"), names, 0,
        false, &taken);
    return taken ? shots[static_cast<std::size_t>(names.indexOf(name))] : nullptr;
}

void DocumentSession::TakeShot(std::shared_ptr<const Shot> shot) {
    m_project.SetShot(std::move(shot));
    onShot();
}

// One picture of a numbered sequence stands for all of it; the bar offers the other way.
void DocumentSession::OpenPicked(const std::string& file) {
    const auto pattern = host::FramePattern::Of(file);
    std::string why;
    const auto shot = pattern ? Shot::Open(*pattern, why) : nullptr;
    if (!shot || shot->Count() < 2) {
        OpenFrames(file);
        return;
    }
    if (OpenFrames(*pattern))
        m_messages.Show(MessageBar::Kind::kInformation,
                        T("%1 of this sequence were opened.")
                            .arg(FramesText(static_cast<qint64>(shot->Count()))),
                        T("&Only This Picture"), [this, file] { OpenFrames(file); });
}

void DocumentSession::OpenDropped(const std::vector<std::string>& files) {
    std::error_code ignored;
    const bool isOne = files.size() == 1;
    if (isOne && IsDocument(files.front()) && !MayDiscard())
        return;
    if (isOne && !IsDocument(files.front()) &&
        std::filesystem::is_regular_file(files.front(), ignored))
        OpenPicked(files.front());
    else
        OpenFiles(files);
}

void DocumentSession::AskForFrames() {
    const auto names = QFileDialog::getOpenFileNames(&m_parent, T("Open Frames"),
                                                     QString::fromStdString(FolderOfFrames()),
                                                     T("Pictures (*.png)"));
    std::vector<std::string> files;
    for (const auto& name : names)
        files.push_back(name.toStdString());
    if (!files.empty())
        OpenDropped(files);
}

void DocumentSession::AskForFolder() {
    const auto folder = QFileDialog::getExistingDirectory(&m_parent, T("Open Folder of Frames"),
                                                          QString::fromStdString(FolderOfFrames()));
    if (!folder.isEmpty())
        OpenFrames(folder.toStdString());
}

void DocumentSession::AskForPattern() {
    bool taken = false;
    const auto pattern = QInputDialog::getText(
        &m_parent, T("Open Frames by Pattern"),
        T("A file name with # or %04d in the place of the number, such as shot.####.png:"),
        QLineEdit::Normal, QString::fromStdString(m_project.TheShot()->Input()), &taken);
    if (taken && !pattern.isEmpty())
        OpenFrames(pattern.toStdString());
}

void DocumentSession::FillRecentMenu(QMenu& menu) {
    menu.clear();
    const auto add = [&menu](const QString& title, const Recent& recent, auto open) {
        const auto list = recent.List();
        if (!list.isEmpty())
            menu.addSection(title);
        for (const auto& path : list)
            menu.addAction(
                QDir::toNativeSeparators(path).replace(QLatin1Char('&'), QStringLiteral("&&")),
                [open, path] { open(path.toStdString()); });
        return !list.isEmpty();
    };
    const bool documents = add(T("Documents"), m_recentDocuments, [this](const std::string& file) {
        if (MayDiscard())
            Open(file);
    });
    const bool frames =
        add(T("Frames"), m_recentFrames, [this](const std::string& input) { OpenFrames(input); });
    menu.addSeparator();
    auto* const clear = menu.addAction(T("&Clear List"), [this] {
        m_recentDocuments.Clear();
        m_recentFrames.Clear();
    });
    clear->setEnabled(documents || frames);
}

} // namespace studio
