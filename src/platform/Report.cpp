// SPDX-License-Identifier: BSD-3-Clause
#include "platform/Report.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <set>
#include <utility>

namespace platform {
namespace {

using SharedHandler = std::shared_ptr<const ReportHandler>;

struct Registry {
    std::mutex mutex;
    std::condition_variable handlerEnded;
    SharedHandler handler;
    std::set<std::pair<ReportKind, std::string>> subjects;
    std::vector<Report> reports;
};

// Never destroyed: modules report while a process ends.
Registry& TheRegistry() {
    static auto* registry = new Registry;
    return *registry;
}

// Lets go of the handler under the lock, so that whoever waits for its end sees it.
class RunningHandler {
public:
    RunningHandler(Registry& registry, SharedHandler handler)
        : m_registry(registry), m_handler(std::move(handler)) {}
    RunningHandler(const RunningHandler&) = delete;
    RunningHandler& operator=(const RunningHandler&) = delete;
    ~RunningHandler() {
        const std::lock_guard lock(m_registry.mutex);
        m_handler.reset();
        m_registry.handlerEnded.notify_all();
    }
    void Run(const Report& report) const { (*m_handler)(report); }

private:
    Registry& m_registry;
    SharedHandler m_handler;
};

// Notes the report and gives the handler to call for it; null when there is nothing to call.
SharedHandler Note(Registry& registry, const Report& report) {
    const std::lock_guard lock(registry.mutex);
    if (registry.reports.size() >= kMaxReports)
        return nullptr;
    if (!registry.subjects.emplace(report.kind, report.asked).second)
        return nullptr;
    registry.reports.push_back(report);
    return registry.handler;
}

const char* Noun(ReportKind kind) {
    switch (kind) {
    case ReportKind::kFontSubstituted:
        return "font family";
    case ReportKind::kFontBroken:
        return "font file";
    case ReportKind::kGlyphMissing:
        return "character";
    case ReportKind::kTextMalformed:
        return "text bytes";
    case ReportKind::kTextTooLarge:
        return "font size";
    case ReportKind::kBundleBroken:
        return "bundle file";
    }
    return "item";
}

} // namespace

std::string Describe(const Report& report) {
    // Characters, bytes and sizes stand in a notation of their own and need no quotes.
    const bool isNamed = report.kind != ReportKind::kGlyphMissing &&
                         report.kind != ReportKind::kTextMalformed &&
                         report.kind != ReportKind::kTextTooLarge;
    const char* const quote = isNamed ? "'" : "";
    std::string line = Noun(report.kind);
    line += " " + (quote + report.asked) + quote + ": " + report.reason;
    if (!report.used.empty())
        line += "; using " + (quote + report.used) + quote + " instead";
    return line;
}

void SetReportHandler(ReportHandler handler) {
    Registry& registry = TheRegistry();
    SharedHandler fresh;
    if (handler)
        fresh = std::make_shared<const ReportHandler>(std::move(handler));
    std::unique_lock lock(registry.mutex);
    const SharedHandler old = std::exchange(registry.handler, std::move(fresh));
    registry.handlerEnded.wait(lock, [&] { return old.use_count() <= 1; });
}

void ReportOnce(const Report& report) {
    Registry& registry = TheRegistry();
    SharedHandler handler = Note(registry, report);
    if (handler)
        RunningHandler(registry, std::move(handler)).Run(report);
}

std::vector<Report> ReportsSoFar() {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    return registry.reports;
}

void ForgetReports() {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.subjects.clear();
    registry.reports.clear();
}

} // namespace platform
