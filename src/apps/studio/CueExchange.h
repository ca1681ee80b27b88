// SPDX-License-Identifier: BSD-3-Clause
// Cues from files of other programs, and back into such.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <QString>

#include "host/cues/CueFile.h"

class QWidget;

namespace studio {

class MessageBar;
class Project;

class CueExchange {
public:
    // parent: of dialogs. All outlive this. rate: that of the shot.
    CueExchange(Project& project, MessageBar& messages, QWidget& parent,
                std::function<host::FrameRate()> rate)
        : m_project(project), m_messages(messages), m_parent(parent), m_rate(std::move(rate)) {}

    void AskForImport();
    // On new tracks over the selected one, with its look; asks how the file is to be read.
    void Import(const std::string& file);
    void AskForExport();
    // Those of the selected track, as the extension says: .srt or .csv. Replaces the file.
    void Export(const std::string& file);

private:
    host::CueTiming Timing() const;
    void Take(const host::CueFile& file, const std::string& name, bool withNames);
    void Tell(const QString& summary, const std::vector<host::CueProblem>& problems,
              std::size_t more);
    void Complain(const QString& text, const std::string& why);

    Project& m_project;
    MessageBar& m_messages;
    QWidget& m_parent;
    std::function<host::FrameRate()> m_rate;
};

} // namespace studio
