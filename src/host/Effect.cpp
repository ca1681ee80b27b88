// SPDX-License-Identifier: BSD-3-Clause
#include "host/Effect.h"

#include <utility>

#include "host/Archive.h"
#include "host/WholeFile.h"
#include "host/frames/OutputFile.h"
#include "platform/TextContext.h"

namespace host {

namespace {

// Far above any settings archive, so that the wrong file is named with its true size.
constexpr std::size_t kMaxArchiveFile = std::size_t { 1 } << 24;

std::span<const std::uint8_t> BytesOf(const _TEXTPARAM& params) {
    return { reinterpret_cast<const std::uint8_t*>(&params), sizeof params };
}

} // namespace

Effect::Effect(std::shared_ptr<Plugin> plugin, LateEntries late)
    : m_plugin(std::move(plugin)),
      m_params(static_cast<std::size_t>(m_plugin->Description().fixedParamSize)),
      m_settings(static_cast<std::size_t>(m_plugin->Description().settingsSize) /
                     sizeof(std::max_align_t) +
                 1),
      m_record(MakeRecord(late)) {
    m_record.hFixedParam = m_params.Ref();
    m_record.pSettings = m_settings.data();
}

std::unique_ptr<Effect> Effect::Make(std::shared_ptr<Plugin> plugin, std::string& why,
                                     LateEntries late) {
    const auto size = plugin->Description().fixedParamSize;
    if (size != sizeof(_TEXTPARAM)) {
        why = plugin->Module().string() + ": its parameters have " + std::to_string(size) +
              " bytes, not the " + std::to_string(sizeof(_TEXTPARAM)) + " of a text overlay";
        return nullptr;
    }
    std::unique_ptr<Effect> effect(new Effect(std::move(plugin), late));
    if (!effect->FillWithDefaults(why))
        return nullptr;
    return effect;
}

bool Effect::FillWithDefaults(std::string& why) {
    auto record = m_record;
    return m_plugin->Run(epiInitFixedParam, record, why) &&
           m_plugin->Run(epiInitSettings, record, why);
}

_TEXTPARAM Effect::CopyParams() const {
    return *Pinned<_TEXTPARAM>(m_params);
}

void Effect::SetParams(const _TEXTPARAM& params) {
    *Params() = params;
}

std::span<std::uint8_t> Effect::Settings() {
    return { reinterpret_cast<std::uint8_t*>(m_settings.data()),
             static_cast<std::size_t>(m_plugin->Description().settingsSize) };
}

bool Effect::Render(Image& image, const FrameInfo& frame, std::string& why) const {
    return RenderRecord(m_params.Ref(), image, frame, why);
}

bool Effect::RenderWith(const _TEXTPARAM& params, Image& image, const FrameInfo& frame,
                        std::string& why) const {
    const Handle ownParams(BytesOf(params));
    return RenderRecord(ownParams.Ref(), image, frame, why);
}

bool Effect::RenderRecord(EPIHandleRef params, Image& image, const FrameInfo& frame,
                          std::string& why) const {
    auto record = m_record;
    record.hFixedParam = params;
    record.hDestination = image.Ref();
    record.pParamValues = &frame.apply;
    record.dScale = frame.scale;
    record.ptOrigin = frame.origin;
    record.nFrameWidth = image.Width();
    record.nFrameHeight = image.Height();
    record.bInfoPresent = 1;
    // What is lost in this frame is this call's failure and nothing that others need to hear of.
    auto& outer = platform::TextContext::Current();
    platform::TextContext met(outer, [&outer](const platform::Report& report) {
        if (report.kind != platform::ReportKind::kTextNotDrawn)
            outer.Tell(report);
    });
    const platform::TextScope scope(met);
    for (std::size_t i = 0; i < frame.strings.size(); ++i)
        if (!SetInfoString(record, i, frame.strings[i], why))
            return false;
    if (!m_plugin->Run(epiDoFilter, record, why))
        return false;
    const auto failure = met.Failure();
    if (!failure.empty())
        why = failure;
    return failure.empty();
}

std::optional<std::vector<std::uint8_t>> Effect::Save(std::string& why) const {
    Archive archive;
    archive.OpenForWriting();
    auto record = m_record;
    record.hArchive = archive.Ref();
    if (!m_plugin->Run(epiSerialize, record, why))
        return std::nullopt;
    const auto bytes = archive.Bytes();
    if (bytes.size() == kArchiveSize)
        return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
    why = m_plugin->Module().string() + ": saved " + std::to_string(bytes.size()) +
          " bytes of settings, not " + std::to_string(kArchiveSize);
    return std::nullopt;
}

bool Effect::Load(std::span<const std::uint8_t> bytes, std::string& why) {
    if (bytes.size() != kArchiveSize) {
        why = "has " + std::to_string(bytes.size()) + " bytes, and a settings archive has " +
              std::to_string(kArchiveSize);
        return false;
    }
    Archive archive;
    archive.OpenForReading(bytes);
    // Parameters of their own take what is read, so that a failure leaves the live ones alone.
    Handle loaded(BytesOf(CopyParams()));
    auto record = m_record;
    record.hArchive = archive.Ref();
    record.hFixedParam = loaded.Ref();
    if (!m_plugin->Run(epiSerialize, record, why))
        return false;
    SetParams(*Pinned<_TEXTPARAM>(loaded));
    return true;
}

bool Effect::SaveFile(const std::filesystem::path& file, std::string& why) const {
    const auto archive = Save(why);
    return archive &&
           WriteWhole(file, *archive, Existing::kOverwrite, why) == OutputResult::kWritten;
}

bool Effect::LoadFile(const std::filesystem::path& file, std::string& why) {
    const auto archive = ReadWholeFile(file, kMaxArchiveFile, why);
    if (!archive)
        return false;
    const auto isLoaded = Load(*archive, why);
    if (!isLoaded)
        why = file.string() + ": " + why;
    return isLoaded;
}

} // namespace host
