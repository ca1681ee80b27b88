// SPDX-License-Identifier: BSD-3-Clause
// Documents, frames and exports: what is opened, saved, kept for a crash and written.
#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

#include <QAction>
#include <QCloseEvent>
#include <QDateTime>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QInputDialog>
#include <QLocale>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>

#include "apps/studio/EffectPanel.h"
#include "apps/studio/ExportBar.h"
#include "apps/studio/ExportDialog.h"
#include "apps/studio/MainWindow.h"
#include "apps/studio/MessageBar.h"
#include "apps/studio/Texts.h"

namespace studio {

namespace {

constexpr std::chrono::milliseconds kExportInterval { 100 };

bool IsDocument(const std::string& file) {
    return std::filesystem::path(file).extension() == host::Document::kExtension;
}

std::string Absolute(const std::string& path) {
    std::error_code error;
    auto const absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

QString DocumentFilter() {
    return T("Telop documents (*%1)").arg(QLatin1String(host::Document::kExtension));
}

// Where the frames of an input lie.
std::filesystem::path FolderOf(const std::string& input) {
    std::error_code ignored;
    std::filesystem::path const path(input);
    return std::filesystem::is_directory(path, ignored) ? path : path.parent_path();
}

} // namespace

// Documents

bool MainWindow::MayDiscard() {
    if (!m_project.IsModified())
        return true;
    switch (onUnsaved ? onUnsaved() : AskUnsaved()) {
    case Answer::kSave:
        return Save();
    case Answer::kDiscard:
        return true;
    default:
        return false;
    }
}

Answer MainWindow::AskUnsaved() {
    QMessageBox box(QMessageBox::Question, T("Unsaved Changes"),
                    T("Save the changes of this document?"), QMessageBox::NoButton, this);
    box.setInformativeText(T("They are lost otherwise."));
    auto const* const save = box.addButton(T("&Save"), QMessageBox::AcceptRole);
    auto const* const discard = box.addButton(T("&Don't Save"), QMessageBox::DestructiveRole);
    box.addButton(T("Cancel"), QMessageBox::RejectRole);
    box.exec();
    return box.clickedButton() == save      ? Answer::kSave
           : box.clickedButton() == discard ? Answer::kDiscard
                                            : Answer::kCancel;
}

void MainWindow::NewDocument() {
    m_player.Stop();
    m_autosave->Forget();
    SetFile({});
    UseEncoding(m_encoding);
    m_project.Reset();
    ShowShot();
}

bool MainWindow::OpenDocument(const std::string& given) {
    auto const file = Absolute(given);
    m_player.Stop();
    if (m_exporter) {
        m_messages->Show(MessageBar::Kind::kInformation,
                         T("An export is running. Open the document when it is done."));
        return false;
    }
    std::string why;
    auto const document = host::Document::Load(file, why);
    if (!document) {
        Complain(T("The document could not be opened."), why);
        Refresh();
        return false;
    }
    m_autosave->Forget();
    TakeDocument(*document, file);
    m_recentDocuments.Add(QString::fromStdString(file));
    return true;
}

void MainWindow::TakeDocument(const host::Document& document, const std::string& file) {
    m_messages->Clear();
    std::string why;
    auto shot = document.input.empty() ? Shot::TestCard() : Shot::Open(document.input, why);
    if (!shot) {
        shot = Shot::TestCard();
        m_messages->Show(
            MessageBar::Kind::kWarning,
            T("The document's frames could not be opened, so the test card stands in for them.") +
                QLatin1Char('\n') + QString::fromStdString(why),
            T("&Open Frames…"), [this] { AskForFrames(); });
    }
    SetFile(file);
    UseEncoding(document.encoding);
    if (!m_project.Take(document, shot, why))
        return Complain(T("The document could not be opened."), why);
    ShowShot();
}

// What is under way in the compositor keeps the context that it was asked in.
void MainWindow::UseEncoding(const platform::TextEncoding& encoding) {
    m_scope.reset();
    m_context = std::make_shared<platform::TextContext>(encoding);
    m_scope.emplace(*m_context);
    m_reportsShown = 0;
}

void MainWindow::SetFile(const std::string& file) {
    m_file = file;
    ShowTitle();
}

bool MainWindow::SaveDocument(const std::string& given) {
    auto const file = Absolute(given);
    std::string why;
    if (!m_project.ToDocument().Save(file, why)) {
        Complain(T("The document could not be saved."), why);
        return false;
    }
    m_autosave->Forget();
    m_project.SetUnmodified();
    SetFile(file);
    m_recentDocuments.Add(QString::fromStdString(file));
    return true;
}

bool MainWindow::Save() {
    return m_file.empty() ? SaveAs() : SaveDocument(m_file);
}

bool MainWindow::SaveAs() {
    QFileDialog dialog(this, T("Save Document"), {}, DocumentFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QString::fromUtf8(host::Document::kExtension.data() + 1));
    auto const folder = FolderOf(m_file.empty() ? m_project.TheShot()->Input() : m_file);
    if (!folder.empty())
        dialog.setDirectory(QString::fromStdString(folder.string()));
    dialog.selectFile(m_file.empty() ? T("Untitled") : QString::fromStdString(m_file));
    return dialog.exec() == QDialog::Accepted &&
           SaveDocument(dialog.selectedFiles().front().toStdString());
}

void MainWindow::AskForDocument() {
    if (!MayDiscard())
        return;
    auto const file = QFileDialog::getOpenFileName(
        this, T("Open Document"), QString::fromStdString(m_file), DocumentFilter());
    if (!file.isEmpty())
        OpenDocument(file.toStdString());
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (m_modal || !MayDiscard())
        return event->ignore();
    auto preferences = Preferences();
    preferences.setValue("window/geometry", saveGeometry());
    preferences.setValue("window/state", saveState());
    m_player.Stop();
    m_autosave->Forget();
    event->accept();
}

// After a crash

void MainWindow::AutosaveNow() {
    if (!m_project.IsModified())
        return;
    std::string why;
    if (!m_autosave->Keep(m_project.ToDocument(), m_file, why))
        Complain(T("No copy of the unsaved changes could be kept."), why);
}

void MainWindow::OfferRestore(const std::filesystem::path& folder) {
    for (auto& copy : host::LeftCopy::Find(folder)) {
        auto const answer = onLeftCopy ? onLeftCopy(copy) : AskLeftCopy(copy);
        if (answer == RestoreAnswer::kDiscard)
            copy.Remove();
        // One document at a time: the others are offered by the next run.
        if (answer == RestoreAnswer::kRestore && Restore(copy))
            return;
    }
}

RestoreAnswer MainWindow::AskLeftCopy(const host::LeftCopy& copy) {
    auto const original = copy.Original();
    auto const name = original.empty() ? T("an untitled document")
                                       : QString::fromStdString(original.filename().string());
    auto const when = std::chrono::file_clock::to_sys(copy.SavedAt());
    auto const time = QDateTime::fromSecsSinceEpoch(
        std::chrono::duration_cast<std::chrono::seconds>(when.time_since_epoch()).count());
    QMessageBox box(QMessageBox::Question, T("Restore Unsaved Work"),
                    T("Telop Studio ended before its work was saved. Restore %1?").arg(name),
                    QMessageBox::NoButton, this);
    box.setInformativeText(
        T("The copy was kept on %1.").arg(QLocale().toString(time, QLocale::ShortFormat)));
    auto const* const restore = box.addButton(T("&Restore"), QMessageBox::AcceptRole);
    auto const* const discard = box.addButton(T("&Throw Away"), QMessageBox::DestructiveRole);
    box.addButton(T("&Later"), QMessageBox::RejectRole);
    box.exec();
    return box.clickedButton() == restore   ? RestoreAnswer::kRestore
           : box.clickedButton() == discard ? RestoreAnswer::kDiscard
                                            : RestoreAnswer::kLater;
}

bool MainWindow::Restore(host::LeftCopy& copy) {
    std::string why;
    auto const document = copy.Load(why);
    if (!document) {
        Complain(T("The copy could not be restored."), why);
        Refresh();
        return false;
    }
    TakeDocument(*document, copy.Original().string());
    m_project.SetModified();
    // This run's own copy first: at no time is there none.
    if (m_autosave->Keep(m_project.ToDocument(), m_file, why))
        copy.Remove();
    return true;
}

// Frames

bool MainWindow::OpenFiles(const std::vector<std::string>& files) {
    if (files.size() == 1 && IsDocument(files.front()))
        return OpenDocument(files.front());
    std::string why;
    auto const input = InputOf(files, why);
    if (input)
        return OpenFrames(*input);
    Complain(T("These files cannot be opened together."), why);
    return false;
}

bool MainWindow::OpenFrames(const std::string& given) {
    auto const input = Absolute(given);
    std::string why;
    auto shot = Shot::Open(input, why);
    if (!shot) {
        Complain(T("The frames could not be opened."), why);
        return false;
    }
    m_messages->Clear();
    m_recentFrames.Add(QString::fromStdString(input));
    TakeShot(std::move(shot));
    return true;
}

void MainWindow::TakeShot(std::shared_ptr<const Shot> shot) {
    m_player.Stop();
    m_project.SetShot(std::move(shot));
    ShowShot();
}

// One picture of a numbered sequence stands for all of it; the bar offers the other way.
void MainWindow::OpenPicked(const std::string& file) {
    auto const pattern = PatternOf(file);
    std::string why;
    auto const shot = pattern ? Shot::Open(*pattern, why) : nullptr;
    if (!shot || shot->Count() < 2) {
        OpenFrames(file);
        return;
    }
    if (OpenFrames(*pattern))
        m_messages->Show(MessageBar::Kind::kInformation,
                         T("%1 of this sequence were opened.")
                             .arg(FramesText(static_cast<qint64>(shot->Count()))),
                         T("&Only This Picture"), [this, file] { OpenFrames(file); });
}

void MainWindow::AskForFrames() {
    auto const files = QFileDialog::getOpenFileNames(
        this, T("Open Frames"),
        QString::fromStdString(FolderOf(m_project.TheShot()->Input()).string()),
        T("Pictures (*.png)"));
    if (files.size() == 1)
        return OpenPicked(files.front().toStdString());
    std::vector<std::string> names;
    for (auto const& file : files)
        names.push_back(file.toStdString());
    if (!names.empty())
        OpenFiles(names);
}

void MainWindow::AskForFolder() {
    auto const folder = QFileDialog::getExistingDirectory(
        this, T("Open Folder of Frames"),
        QString::fromStdString(FolderOf(m_project.TheShot()->Input()).string()));
    if (!folder.isEmpty())
        OpenFrames(folder.toStdString());
}

void MainWindow::AskForPattern() {
    auto const& input = m_project.TheShot()->Input();
    bool taken = false;
    auto const pattern = QInputDialog::getText(
        this, T("Open Frames by Pattern"),
        T("A file name with # or %04d in the place of the number, such as shot.####.png:"),
        QLineEdit::Normal, QString::fromStdString(input), &taken);
    if (taken && !pattern.isEmpty())
        OpenFrames(pattern.toStdString());
}

void MainWindow::FillRecentMenu() {
    m_recentMenu->clear();
    auto const add = [this](const QString& title, const Recent& recent, auto open) {
        auto const list = recent.List();
        if (!list.isEmpty())
            m_recentMenu->addSection(title);
        for (auto const& path : list)
            m_recentMenu->addAction(
                QDir::toNativeSeparators(path).replace(QLatin1Char('&'), QStringLiteral("&&")),
                this, [open, path] { open(path.toStdString()); });
        return !list.isEmpty();
    };
    bool const documents = add(T("Documents"), m_recentDocuments, [this](const std::string& file) {
        if (MayDiscard())
            OpenDocument(file);
    });
    bool const frames =
        add(T("Frames"), m_recentFrames, [this](const std::string& input) { OpenFrames(input); });
    m_recentMenu->addSeparator();
    auto* const clear = m_recentMenu->addAction(T("&Clear List"), this, [this] {
        m_recentDocuments.Clear();
        m_recentFrames.Clear();
    });
    clear->setEnabled(documents || frames);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && !m_modal)
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    std::vector<std::string> files;
    for (auto const& url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            files.push_back(url.toLocalFile().toStdString());
    }
    if (files.empty())
        return;
    event->acceptProposedAction();
    std::error_code ignored;
    if (files.size() == 1 && IsDocument(files.front())) {
        if (MayDiscard())
            OpenDocument(files.front());
    } else if (files.size() == 1 && std::filesystem::is_regular_file(files.front(), ignored)) {
        OpenPicked(files.front());
    } else {
        OpenFiles(files);
    }
}

// Exporting

void MainWindow::AskForExport() {
    auto const& shot = *m_project.TheShot();
    if (shot.IsTestCard())
        return m_messages->Show(
            MessageBar::Kind::kInformation,
            T("The test card is not exported. Open the frames that get the text."),
            T("&Open Frames…"), [this] { AskForFrames(); });
    host::ExportOptions proposal;
    proposal.output = (FolderOf(shot.Input()) / "telop" / "").string();
    ExportDialog dialog(shot, proposal, this);
    if (dialog.exec() == QDialog::Accepted)
        StartExport(dialog.Options());
}

void MainWindow::StartExport(const host::ExportOptions& options) {
    if (!m_project.Effect() || m_exporter)
        return;
    host::PlanProblem problem;
    m_exporter = Exporter::Start(
        m_project.ToDocument(), *m_project.Effect(), options, [this] { EndExport(); }, problem);
    if (!m_exporter)
        return Complain(T("The frames cannot be exported."), problem.text);
    m_messages->Clear();
    m_exportBar->Begin(m_exporter->Total());
    m_exportTimer.start(kExportInterval);
    UpdateActions();
}

void MainWindow::ShowExport() {
    if (m_exporter)
        m_exportBar->SetDone(m_exporter->Done(), m_exporter->Failed());
}

void MainWindow::EndExport() {
    m_exportTimer.stop();
    m_exportBar->End();
    auto const exporter = std::move(m_exporter);
    UpdateActions();
    auto const summary = Summary(exporter->Result());
    auto const failures = Failures(exporter->Result(), exporter->Missing());
    if (failures.isEmpty())
        return m_messages->Show(MessageBar::Kind::kInformation, summary);
    auto const first = failures.section(QLatin1Char('\n'), 0, 0);
    m_messages->Show(MessageBar::Kind::kError, summary + QLatin1Char('\n') + first, T("De&tails…"),
                     [this, summary, failures] { ShowFailures(summary, failures); });
}

void MainWindow::ShowFailures(const QString& summary, const QString& failures) {
    QMessageBox box(QMessageBox::Warning, T("Export"), summary, QMessageBox::NoButton, this);
    box.setInformativeText(T("What failed, and why:"));
    box.setDetailedText(failures);
    box.addButton(T("Close"), QMessageBox::RejectRole);
    box.exec();
}

} // namespace studio
