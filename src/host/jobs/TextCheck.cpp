// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/TextCheck.h"

#include <algorithm>
#include <utility>

#include "host/Message.h"
#include "host/frames/PngReader.h"
#include "host/text/TextField.h"

namespace host {

namespace {

constexpr std::int64_t kPixelsMax = 40'000'000; // of a picture that is made for this alone

std::string WhyNotOn(const Track& track, std::span<const FrameFile> files) {
    if (track.on.Ranges().empty())
        return "it is turned off on all of them";
    const auto first = std::to_string(files.front().number);
    const auto where = track.cues.empty() ? track.on.ToString()
                                          : std::to_string(track.cues.front().first) +
                                                " and later, as its cues are";
    return "it is on " + where + ", and the frames are " + first +
           (files.size() > 1 ? " to " + std::to_string(files.back().number) : "");
}

std::string WhyEmpty(const _TEXTPARAM& params) {
    const auto isEmpty = [](const auto& field) { return FieldBytes(field).empty(); };
    switch (KindOf(params)) {
    case TextKind::kInfo:
        return isEmpty(params.szInfoText) ? "the direction is empty" : "";
    case TextKind::kCharacter:
        return isEmpty(params.szCharacter) ? "the character's name is empty" : "";
    case TextKind::kDialogue:
        return isEmpty(params.szDialogue) ? "the dialogue is empty" : "";
    case TextKind::kNone:
        return "no kind of text is chosen";
    default:
        return {};
    }
}

// A track and its text on the first frame that has one.
struct Sample {
    const FrameRenderer& renderer;
    const TrackText& track;
    const FrameText& text;
    TokenValues values;
};

// Whether it changes a picture of that shade. What fails says so in the run.
bool Shows(const Sample& sample, Image& image, std::uint8_t shade) {
    std::ranges::fill(image.Bytes(), shade);
    std::string ignored;
    return !sample.renderer.Draw(sample.track, sample.text, image, sample.values, ignored) ||
           std::ranges::any_of(std::as_const(image).Bytes(),
                               [shade](std::uint8_t byte) { return byte != shade; });
}

std::string WhyUnseen(const Sample& sample, const _TEXTPARAM& params, const FrameFile& file) {
    const auto outline = LookAtPng(file.path);
    if (!outline || std::int64_t { outline->width } * outline->height > kPixelsMax)
        return {};
    const auto image = Image::Make(outline->width, outline->height, kRgb24);
    if (!image)
        return {};
    platform::TextContext apart;
    const platform::TextScope scope(apart);
    // A text may have the colour of one of the two.
    if (Shows(sample, *image, 255) || Shows(sample, *image, 0))
        return {};
    if (params.nOpacity == 0)
        return "its opacity is 0";
    const auto size = std::to_string(image->Width()) + " x " + std::to_string(image->Height());
    const auto& at = params.ptPos;
    const bool isAnchored = sample.track.TheTrack().anchor.place != AnchorPlace::kNone;
    return (isAnchored ? "" : "at " + std::to_string(at.x) + "," + std::to_string(at.y) + " ") +
           "it lies outside the picture, which has " + size + " pixels (" +
           Printable(file.path.filename().native()) + ")";
}

std::string WhyOnNone(const FrameRenderer& renderer, const TrackText& track,
                      std::span<const FrameFile> files,
                      const std::shared_ptr<const RunValues>& run) {
    const auto first =
        std::ranges::find_if(files, [&](const auto& file) { return track.At(file.number); });
    if (first == files.end())
        return WhyNotOn(track.TheTrack(), files);
    const Sample sample { renderer,
                          track,
                          *track.At(first->number),
                          { first->number, first->path.stem().string(), run } };
    ResolvedText resolved;
    std::string tooLong; // for this frame, which will say so
    if (!sample.text.Resolve(sample.values, resolved, tooLong))
        return {};
    const auto reason = WhyEmpty(resolved.params);
    return reason.empty() ? WhyUnseen(sample, resolved.params, *first) : reason;
}

} // namespace

std::vector<std::string> WhyOnNoFrame(const FrameRenderer& renderer, const ShotText& text,
                                      std::span<const FrameFile> files,
                                      const std::shared_ptr<const RunValues>& run) {
    std::vector<std::string> sentences;
    if (files.empty())
        return sentences;
    const auto& tracks = text.Tracks();
    if (tracks.empty())
        sentences.emplace_back("the text is on no frame: no track is shown");
    for (const auto& track : tracks) {
        const auto reason = WhyOnNone(renderer, track, files, run);
        if (!reason.empty())
            sentences.push_back((tracks.size() > 1
                                     ? "the text of track '" + track.TheTrack().name + "'"
                                     : std::string("the text")) +
                                " is on no frame: " + reason);
    }
    return sentences;
}

} // namespace host
