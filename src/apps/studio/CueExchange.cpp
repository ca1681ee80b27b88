// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/CueExchange.h"

#include <filesystem>
#include <span>
#include <utility>

#include <QFileDialog>
#include <QStringList>

#include "apps/studio/CueImportDialog.h"
#include "apps/studio/MessageBar.h"
#include "apps/studio/Project.h"
#include "apps/studio/Texts.h"
#include "host/WholeFile.h"
#include "host/cues/CueTracks.h"
#include "host/cues/CueWriter.h"
#include "host/frames/OutputFile.h"

namespace studio {

host::CueTiming CueExchange::Timing() const {
    return { .timeCode = host::TimeCode(m_rate()),
             .startFrame = m_project.TheShot()->Numbers().front() };
}

void CueExchange::Complain(const QString& text, const std::string& why) {
    m_messages.Show(MessageBar::Kind::kError,
                    text + QLatin1Char('\n') + QString::fromStdString(why));
}

void CueExchange::Tell(const QString& summary, const std::vector<host::CueProblem>& problems,
                       std::size_t more) {
    QStringList lines;
    for (const auto& problem : problems) {
        auto text = QString::fromStdString(problem.text);
        if (problem.lost)
            text = T("%1 (left out)").arg(text);
        lines += problem.line > 0 ? T("Line %1: %2").arg(problem.line).arg(text) : text;
    }
    if (more > 0)
        lines += T("and %1 more").arg(more);
    m_messages.ShowList(lines.isEmpty() ? MessageBar::Kind::kInformation
                                        : MessageBar::Kind::kWarning,
                        summary, lines.mid(0, 1), lines, T("Cues"));
}

// In

void CueExchange::AskForImport() {
    const auto file = QFileDialog::getOpenFileName(
        &m_parent, T("Import Cues"), QString::fromStdString(m_project.TheShot()->Folder().string()),
        T("Subtitles and tables (%1)")
            .arg(QStringLiteral("*.srt *.vtt *.ass *.ssa *.csv *.tsv *.txt")));
    if (!file.isEmpty())
        Import(file.toStdString());
}

void CueExchange::Import(const std::string& file) {
    std::string why;
    const auto bytes = host::ReadWholeFile(file, host::CueFile::kMaxBytes, why);
    if (!bytes)
        return Complain(T("The cues could not be read."), why);
    const std::filesystem::path path(file);
    CueImportDialog dialog(path.filename().string(), { bytes->begin(), bytes->end() }, Timing(),
                           &m_parent);
    if (dialog.exec() == QDialog::Accepted)
        Take(dialog.File(), path.stem().string(), dialog.WithNames());
}

void CueExchange::Take(const host::CueFile& file, const std::string& name, bool withNames) {
    const auto selected = m_project.Committed().selected;
    auto tracks = m_project.Committed().tracks;
    const auto trackOf = [&](host::TextKind kind, std::string called) {
        auto track = host::TrackForCues(kind, std::move(called), tracks[selected]);
        track.cues = host::CuesForTrack(kind, file.cues);
        return track;
    };
    auto dialogue = trackOf(host::TextKind::kDialogue, name);
    auto names = trackOf(host::TextKind::kCharacter, T("Names").toStdString());
    // Cues beside the shot are kept, and seen nowhere.
    auto problems = file.problems;
    const auto beside = host::CuesBeside(file.cues, m_project.TheShot()->Numbers());
    if (beside > 0)
        problems.insert(
            problems.begin(),
            { .text = T("%1 of them are on none of the shot's frames.").arg(beside).toStdString(),
              .lost = false });
    const auto above = tracks.begin() + static_cast<std::ptrdiff_t>(selected) + 1;
    const auto at = tracks.insert(above, std::move(dialogue));
    if (withNames)
        tracks.insert(at + 1, std::move(names));
    m_project.ChangeTracks(T("Import Cues"), std::move(tracks), selected + 1);
    Tell(T("%1 cues were imported.").arg(file.cues.size()), problems, file.moreProblems);
}

// Out

void CueExchange::AskForExport() {
    if (m_project.Committed().Selected().cues.empty())
        return m_messages.Show(MessageBar::Kind::kInformation,
                               T("The selected track has no cues."));
    QFileDialog dialog(&m_parent, T("Export Cues"),
                       QString::fromStdString(m_project.TheShot()->Folder().string()));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({ T("Subtitles (%1)").arg(QStringLiteral("*.srt")),
                            T("Table (%1)").arg(QStringLiteral("*.csv")) });
    const auto follow = [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(filter.contains(QLatin1String("*.csv")) ? QStringLiteral("csv")
                                                                        : QStringLiteral("srt"));
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
    follow({});
    if (dialog.exec() == QDialog::Accepted)
        Export(dialog.selectedFiles().front().toStdString());
}

void CueExchange::Export(const std::string& file) {
    const bool isTable =
        QString::fromStdString(file).endsWith(QLatin1String(".csv"), Qt::CaseInsensitive);
    const auto cues = host::CuesOfTrack(m_project.Committed().Selected(), !isTable);
    std::vector<host::CueProblem> problems;
    const auto text =
        isTable ? host::WriteCueTable(cues) : host::WriteSubRip(cues, Timing(), problems);
    std::string why;
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    if (host::WriteWhole(file, bytes, host::Existing::kOverwrite, why) !=
        host::OutputResult::kWritten)
        return Complain(T("The cues could not be written."), why);
    Tell(T("The cues of this track were written."), problems, 0);
}

} // namespace studio
