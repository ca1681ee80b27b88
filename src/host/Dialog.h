// SPDX-License-Identifier: BSD-3-Clause
// An open dialog of an effect: made, notified and destroyed in the order that plug-ins rely on.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <epi/epi.h>

#include "host/Effect.h"

namespace host {

enum class DialogKind { kSettingsPanel, kTextEdit };

// Lives on the user-interface thread, and not longer than its effect and the composite image.
class Dialog {
public:
    struct Frame {
        std::int32_t width = 0, height = 0; // pixels at scale 1
        Image* composite = nullptr;         // the frame under the effect; null: none
        // The score line's parts; nothing when this host has none.
        std::optional<std::array<std::string, 4>> strings {};
        std::int32_t* previewSwitch = nullptr; // previews may set it; null: on
    };
    // Null with the reason when the plug-in makes no window.
    static std::unique_ptr<Dialog> Open(Effect& effect, DialogKind kind, const Frame& frame,
                                        std::string& why);
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    ~Dialog(); // destroys the dialog

    EPIWindowRef Window() const { return m_record.hDialogWindow; }
    // code is epiNotifyOK or epiNotifyUpdate. False with the reason when the plug-in gives an error.
    bool Notify(std::int32_t code, std::string& why);
    bool NotifyComposite(Image* composite, std::string& why);
    // What the next notification tells of: another frame, other strings.
    void SetFrame(const Frame& frame);
    // What the text edit dialog made of the last epiNotifyOK.
    std::int32_t NotifyResult() const { return m_record.nNotifyResult; }

private:
    explicit Dialog(Effect& effect) : m_effect(&effect), m_record(effect.Record()) {}

    Effect* m_effect;
    _EPIRECORD m_record; // one and the same from creation to destruction
};

} // namespace host
