// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/RenderOptions.h"

#include "apps/telop/Commands.h"
#include "apps/telop/OptionText.h"
#include "host/frames/FrameRanges.h"
#include "host/frames/PngWriter.h"

namespace telop {

namespace {

constexpr int kMaxJobs = 256;

constexpr const char* kDescription =
    "Burns a text into a picture, a sequence of pictures or a stream of them.\n\n"
    "INPUT and OUTPUT are a picture (a.png), a numbered sequence (shot.%04d.png or shot.####.png), "
    "a\n"
    "folder, or - for a stream of PAM pictures on standard input or output. A frame's number is "
    "that\n"
    "of its file.";

constexpr const char* kExamples =
    "Tokens, in any text: {frame}, {frame:04} (4 digits), {frame-1000} (counted from 1000), "
    "{frame+1:03};\n{first}, {last} and {count} of the shot; {tc} and {seconds}, {seconds:.2} from "
    "its "
    "first frame;\n{file} (the picture's name without folder and extension), {name} of its folder; "
    "{date} and {time}\nof the run; {KEY} of --define; {{ and }} are braces. A stream has no "
    "{last}, "
    "{count}, {file}, {name}.\nA dialogue that starts with @ is written with @@, a comma within "
    "--strings as "
    "\\,.\n\n"
    "Examples:\n"
    "  telop render --info PAN --at 60,40 shot.####.png out/shot.####.png\n"
    "  telop render --score 0 --strings ,,12,{frame} --box black shot/ out/\n"
    "  telop render --character Hanako --off --opacity 100 --box none a.png b.png\n"
    "  telop render --dialogue @line.txt --font 'Noto Sans CJK JP' --size 48 a.png b.png\n"
    "  telop render --info PAN --at 60,40 --then --character Hanako --anchor bottom a.png b.png\n"
    "  telop render --info '{shot}  {tc}' --define shot=010 --fps 23.976 --timecode 01:00:00:00 a/ "
    "b/\n"
    "  telop render --document shot.telop out/\n"
    "  ffmpeg -i in.mov -f image2pipe -c:v pam - | telop render --info T.U. - - |\n"
    "    ffmpeg -f image2pipe -c:v pam -i - out.mov\n\n";

void AddTextsOptions(CLI::App& command, RenderOptions& options) {
    AddTextOptions(command, options.text);
    OptionGroup group(command, "Texts");
    group.Flag("--then", options.then,
               "Begins another text, which looks like the one before unless it says otherwise");
    group.Add(
        "--strings", options.strings, "A,B,C,D",
        "The score line's four parts, numbers with zeros in front, 0 for an empty one; without "
        "it the last one is the frame's number");
    group
        .Add("--scale", options.view.scale, "FACTOR",
             "Picture pixels for a frame pixel; moves --at, and sizes stay")
        ->check(PositiveFactor());
    group.Add("--origin", options.origin, "X,Y",
              "The picture's top left within the scaled frame, for a picture that is a part");
}

void AddFrameOptions(CLI::App& command, RenderOptions& options) {
    OptionGroup group(command, "Frames");
    group.Add("--frames", options.frames, "RANGES",
              "Frames to make: 1001-1100:2,1200 or -5-10; 10- and ..10 have one end");
    group.Add("--start", options.start, "NUMBER", "Number of a stream's first frame (1)")
        ->check(WholeNumber(host::kFrameMin, host::kFrameMax));
}

void AddSettingsOptions(CLI::App& command, RenderOptions& options) {
    OptionGroup group(command, "Settings");
    auto* settings =
        group.Add("--settings", options.settings, "FILE", "Settings to start from (480 bytes)");
    auto* document = group.Add("--document", options.document, "FILE",
                               "A telop-studio document: frames and texts; INPUT may be left out");
    group
        .Add("--track", options.tracks, "NAME",
             "Only this track of the document, which the options above change; again for more")
        ->needs(document)
        ->allow_extra_args(false);
    group.Add("--save-settings", options.saveSettings, "FILE",
              "Write the settings with all options in them; needs no INPUT");
    group.Add("--save-document", options.saveDocument, "FILE",
              "Write all texts as a document, for telop-studio or later runs; needs no INPUT");
    auto* encoding = group.Add("--encoding", options.encoding, "NAME",
                               "Of texts in settings and @FILE; UTF-8, CP932, ...");
    document->excludes(settings)->excludes(encoding);
    group.Add("--language", options.language, "CODE",
              "Of the words that the effect adds, such as (OFF): en or ja (the environment's)");
    group.Add("--fallback", options.fallback, "FAMILIES",
              "Font families, 'A,B', to take first for characters that --font lacks");
    group.Flag("--strict-fonts", options.strictFonts,
               "Stop when a font is not installed or a character is not there, or is cut off");
    group.Add("--plugin", options.plugin, "BUNDLE", "The bundle to use");
}

void AddOutputOptions(CLI::App& command, RenderOptions& options) {
    OptionGroup group(command, "Output");
    group.Add("--jobs", options.jobs, "N", "Frames made at once (as many as cores)")
        ->check(WholeNumber(1, kMaxJobs));
    group
        .Add("--memory", options.memory, "SIZE",
             "For all frames in work together, such as 800M or 8G (most of what is free)")
        ->transform(ByteSize());
    group
        .Add("--compression", options.compression, "0..9",
             "Of PNG, 0 none to 9 smallest (" + std::to_string(options.compression) + ")")
        ->check(WholeNumber(0, host::kPngLevelMax));
    auto* overwrite = group.Flag("--overwrite", options.overwrite, "Replace outputs that exist");
    group.Flag("--skip-existing", options.skipExisting, "Leave outputs that exist, make the rest")
        ->excludes(overwrite);
    group
        .Add("--progress", options.progress, "bar|lines|none",
             "A bar, a line for each frame, or nothing (bar on a terminal, else none)")
        ->transform(OneOf({ "bar", "lines", "none" }));
    group.Flag("-q,--quiet", options.quiet, "Only errors");
}

} // namespace

RenderOptions::RenderOptions() : compression(host::kPngLevelDefault) {}

void AddRenderOptions(CLI::App& command, RenderOptions& options) {
    command.description(kDescription);
    command.add_option("INPUT", options.input, "Picture, sequence, folder or -");
    command.add_option("OUTPUT", options.output, "Picture, sequence, folder or -");
    AddTextsOptions(command, options);
    AddFrameOptions(command, options);
    AddShotOptions(command, options.shot);
    AddSettingsOptions(command, options);
    AddOutputOptions(command, options);
    command.footer(std::string(kExamples) + kExitCodeHelp);
}

} // namespace telop
