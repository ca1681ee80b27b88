// SPDX-License-Identifier: BSD-3-Clause
// Text by the plug-in: the selector DoFilter through the entry point of the bundle, as a host calls
// it for every frame.
#include <algorithm>
#include <charconv>
#include <cstring>
#include <stdexcept>
#include <string>

#include "Renderer.h"
#include "host/Plugin.h"
#include "host/Tables.h"
#include "platform/TextEncoding.h"

namespace bench {

namespace {

const host::Plugin& LoadedPlugin() {
    static const auto plugin = [] {
        std::string why;
        auto loaded = host::Plugin::LoadByName("TextOverlay", why);
        if (!loaded)
            throw std::runtime_error(why);
        return loaded;
    }();
    return *plugin;
}

// The host library's handles move each time they are unlocked, to find mistakes. That is not what
// DoFilter costs, so these stay where they are: a reference is the address itself.
const EPIHandleProcs& StillHandleTable() {
    static const EPIHandleProcs table = [] {
        EPIHandleProcs procs {};
        procs.nSize = sizeof procs;
        procs.Lock = [](EPIHandleRef handle) -> void* { return handle; };
        procs.Unlock = [](EPIHandleRef) {};
        return procs;
    }();
    return table;
}

template <std::size_t Size>
void CopyInto(char (&field)[Size], std::string_view bytes) {
    if (bytes.size() >= Size)
        throw std::runtime_error("the text does not fit: " + std::string(bytes));
    std::memcpy(field, bytes.data(), bytes.size());
    field[bytes.size()] = 0;
}

template <std::size_t Size>
void WriteNumber(char (&field)[Size], std::uint32_t number) {
    *std::to_chars(field, field + Size - 1, number).ptr = 0;
}

std::string Encoded(const TextCase& text) {
    if (!platform::SetApplicationTextEncoding(text.encoding))
        throw std::runtime_error(std::string("no encoding ") + text.encoding);
    std::string lines = text.text;
    std::replace(lines.begin(), lines.end(), '\n', '\r');
    return platform::EncodeText(lines).bytes;
}

class EffectRenderer : public Renderer {
public:
    EffectRenderer(const TextCase& text, host::Image& frame)
        : m_plugin(LoadedPlugin()), m_text(Encoded(text)), m_record(host::MakeRecord()) {
        m_record.pHandleProcs = &StillHandleTable();
        m_record.hFixedParam = reinterpret_cast<EPIHandleRef>(&m_params);
        m_record.pParamValues = &m_apply;
        m_record.hDestination = frame.Ref();
        m_record.nFrameWidth = frame.Width();
        m_record.nFrameHeight = frame.Height();
        m_record.dScale = 1;
        m_plugin.Call(epiInitFixedParam, &m_record);
        SetParams(text);
        Count(kStillCounter);
    }

    void Draw(std::uint32_t counter) override {
        if (m_text.Set(counter))
            Count(counter);
        m_plugin.Call(epiDoFilter, &m_record);
    }

private:
    void SetParams(const TextCase& text) {
        m_params.ptPos = { kLeft, kTop };
        CopyInto(m_params.szFontName, text.family);
        m_params.nFontSize = text.sizePx;
        m_params.nOpacity = text.opacity;
        m_params.dwFlags = text.box ? TEXT_SCORE | TEXT_BOX : TEXT_DIALOGUE;
    }

    // As a host does between two frames: a score line gets the numbers of the cut and the frame.
    void Count(std::uint32_t counter) {
        if (m_params.dwFlags & TEXT_SCORE) {
            WriteNumber(m_record.szInfo3, counter / 10000);
            WriteNumber(m_record.szInfo4, counter % 10000);
        } else {
            CopyInto(m_params.szDialogue, m_text.Bytes());
        }
    }

    const host::Plugin& m_plugin;
    CountedText m_text;
    _TEXTPARAM m_params {};
    const double m_apply = 1;
    _EPIRECORD m_record;
};

} // namespace

std::unique_ptr<Renderer> MakeEffect(const TextCase& text, host::Image& frame, Content) {
    return std::make_unique<EffectRenderer>(text, frame);
}

} // namespace bench
