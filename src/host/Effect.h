// SPDX-License-Identifier: BSD-3-Clause
// One use of a plug-in's effect: its parameters, its settings, and frames rendered with them.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <epi/epi.h>

#include "host/Handle.h"
#include "host/Image.h"
#include "host/Plugin.h"
#include "host/Tables.h"

namespace host {

// What changes from frame to frame besides the picture.
struct FrameInfo {
    // The score line's parts in the application's text encoding, 63 bytes at most each.
    std::array<std::string_view, 4> strings {};
    double apply = 1;         // the animated switch: on when its integer part is not 0
    double scale = 1;         // image pixels for each frame pixel
    tagPOINT origin { 0, 0 }; // the image's top left in scaled pixels
};

class Effect {
public:
    // Allocates the parameters and the settings with the sizes that the plug-in reports and has
    // them filled with its defaults. Null with the reason when the parameters are not a _TEXTPARAM.
    static std::unique_ptr<Effect> Make(std::shared_ptr<Plugin> plugin, std::string& why,
                                        LateEntries late = LateEntries::kPresent);

    const Plugin& ThePlugin() const { return *m_plugin; }

    // The live parameters, pinned while the result lives: "effect.Params()->nFontSize = 48;". Not
    // to be changed while a frame is being rendered with them.
    Pinned<_TEXTPARAM> Params() { return Pinned<_TEXTPARAM>(m_params); }
    _TEXTPARAM CopyParams() const;
    void SetParams(const _TEXTPARAM& params);
    // The block of dialog settings, settingsSize bytes.
    std::span<std::uint8_t> Settings();

    // Draws into the image with the effect's parameters, whose texts are in the encoding of the
    // thread's text context; that is told what could not be honoured to the letter. False with the
    // reason when the text could not be drawn, the plug-in gives an error or an information string is
    // too long. Any number of threads at once, each with an image of its own.
    bool Render(Image& image, const FrameInfo& frame, std::string& why) const;
    // The same with parameters of the frame's own, which costs one small copy.
    bool RenderWith(const _TEXTPARAM& params, Image& image, const FrameInfo& frame,
                    std::string& why) const;

    // The settings archive: exactly kArchiveSize bytes, integers big-endian. A failing Load leaves
    // the parameters as they were; the reason names the size or the file.
    static constexpr std::size_t kArchiveSize = sizeof(_TEXTPARAM);
    std::optional<std::vector<std::uint8_t>> Save(std::string& why) const;
    bool Load(std::span<const std::uint8_t> archive, std::string& why);
    bool SaveFile(const std::filesystem::path& file, std::string& why) const;
    bool LoadFile(const std::filesystem::path& file, std::string& why);

    // A record for this effect with tables, parameters and settings in it, for calls that Effect
    // does not make itself.
    _EPIRECORD Record() const { return m_record; }

private:
    Effect(std::shared_ptr<Plugin> plugin, LateEntries late);
    bool FillWithDefaults(std::string& why);
    bool RenderRecord(EPIHandleRef params, Image& image, const FrameInfo& frame,
                      std::string& why) const;

    std::shared_ptr<Plugin> m_plugin;
    mutable Handle m_params;
    // Of a type that aligns the block for any record that a plug-in keeps in it.
    std::vector<std::max_align_t> m_settings;
    _EPIRECORD m_record; // what every call starts from
};

} // namespace host
