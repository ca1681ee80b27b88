// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/RenderOptions.h"

#include <CLI/CLI.hpp>

#include "apps/telop/CommandError.h"
#include "apps/telop/OptionChecks.h"
#include "host/frames/FrameRanges.h"
#include "host/frames/PngWriter.h"

namespace telop {

namespace {

constexpr int kMaxJobs = 256;

constexpr const char* kDescription =
    "Burns a text into a picture, a sequence of pictures or a stream of them.\n\n"
    "INPUT and OUTPUT are a picture (a.png), a numbered sequence (shot.%04d.png or shot.####.png), "
    "a\n"
    "folder, or - for a stream of PAM pictures on standard input or output.";

constexpr const char* kExamples =
    "Tokens, in any text: {frame}, {frame:04} (4 digits), {frame-1000} (counted from 1000), "
    "{frame+1:03},\n{file} (the picture's name without folder and extension); {{ and }} are "
    "braces.\nA dialogue that starts with @ is written with @@, a comma within --strings as "
    "\\,.\n\n"
    "Examples:\n"
    "  telop render --info PAN --at 60,40 shot.####.png out/shot.####.png\n"
    "  telop render --score 0 --strings ,,12,{frame} --box black shot/ out/\n"
    "  telop render --character Hanako --off --opacity 100 --box none a.png b.png\n"
    "  telop render --dialogue @line.txt --font 'Noto Sans CJK JP' --size 48 a.png b.png\n"
    "  telop render --document shot.telop out/\n"
    "  ffmpeg -i in.mov -f image2pipe -c:v pam - | telop render --info T.U. - - |\n"
    "    ffmpeg -f image2pipe -c:v pam -i - out.mov\n\n";

void AddTextOptions(CLI::App& command, TextOptions& text) {
    auto const group = "Text (one of the first four; without any, that of the settings)";
    auto* info = command.add_option("--info", text.info, "A direction, one line")
                     ->option_text("TEXT")
                     ->group(group);
    auto* character = command.add_option("--character", text.character, "A character's name")
                          ->option_text("NAME")
                          ->group(group);
    auto* dialogue =
        command
            .add_option("--dialogue", text.dialogue,
                        "Lines of dialogue, \\n between them, or @FILE to read them from a file")
            ->option_text("TEXT|@FILE")
            ->group(group);
    auto* score = command
                      .add_option("--score", text.score,
                                  "The score line: 0 C-3-4, 1 3-4, 2 2-3-4, 3 1-2-3-4 of --strings")
                      ->check(WholeNumber(0, 3))
                      ->option_text("0..3")
                      ->group(group);
    command
        .add_option("--strings", text.strings,
                    "The score line's four parts; without it the last one is the frame's number")
        ->option_text("A,B,C,D")
        ->group(group);
    auto* off =
        command.add_flag("--off", text.off, "The character speaks from off screen")->group(group);
    auto* monologue =
        command.add_flag("--monologue", text.monologue, "The character speaks to itself")
            ->group(group);
    info->excludes(character)->excludes(dialogue)->excludes(score);
    character->excludes(dialogue)->excludes(score);
    dialogue->excludes(score);
    off->excludes(monologue);
}

void AddLookOptions(CLI::App& command, RenderOptions& options) {
    auto const group = "Look";
    auto& text = options.text;
    command.add_option("--font", text.font, "Font family; 'telop fonts' lists them")
        ->option_text("FAMILY")
        ->group(group);
    command.add_option("--size", text.size, "Size in points, which are pixels")
        ->check(WholeNumber(1, 32767))
        ->option_text("POINTS")
        ->group(group);
    command.add_option("--color", text.color, "Of the text: #RRGGBB, #RGB, r,g,b or a name")
        ->option_text("COLOR")
        ->group(group);
    command.add_option("--box", text.box, "Color of the box behind the text, or none")
        ->option_text("COLOR|none")
        ->group(group);
    command
        .add_option("--opacity", text.opacity, "Of the text, or of the box with it, in per cent")
        ->check(WholeNumber(0, 100))
        ->option_text("0..100")
        ->group(group);
    command.add_option("--at", text.position, "Top left of the text in frame pixels")
        ->option_text("X,Y")
        ->group(group);
    command.add_option("--scale", options.scale, "Picture pixels for a frame pixel; moves --at")
        ->check(PositiveFactor())
        ->option_text("FACTOR")
        ->group(group);
    command
        .add_option("--origin", options.origin,
                    "The picture's top left within the scaled frame, for a picture that is a part")
        ->option_text("X,Y")
        ->group(group);
}

void AddFrameOptions(CLI::App& command, RenderOptions& options) {
    auto const group = "Frames";
    command.add_option("--frames", options.frames, "Frames to make, such as 1001-1100:2,1200")
        ->option_text("RANGES")
        ->group(group);
    command
        .add_option("--apply", options.apply,
                    "Frames that get the text; the others are copied as they are")
        ->option_text("RANGES")
        ->group(group);
    command.add_option("--start", options.start, "Number of a stream's first frame (1)")
        ->check(WholeNumber(0, host::kFrameMax))
        ->option_text("NUMBER")
        ->group(group);
}

void AddSettingsOptions(CLI::App& command, RenderOptions& options) {
    auto const group = "Settings";
    auto* settings =
        command.add_option("--settings", options.settings, "Settings to start from (480 bytes)")
            ->option_text("FILE")
            ->group(group);
    auto* document =
        command
            .add_option("--document", options.document,
                        "A telop-studio document: frames, text, ranges; INPUT may be left out")
            ->option_text("FILE")
            ->group(group);
    command
        .add_option("--save-settings", options.saveSettings,
                    "Write the settings with all options in them; needs no INPUT")
        ->option_text("FILE")
        ->group(group);
    auto* encoding =
        command
            .add_option("--encoding", options.encoding, "Of texts in settings; UTF-8, CP932, ...")
            ->option_text("NAME")
            ->group(group);
    document->excludes(settings)->excludes(encoding);
    command
        .add_flag("--strict-fonts", options.strictFonts,
                  "Stop when a font is not installed or no font has a character")
        ->group(group);
    command.add_option("--plugin", options.plugin, "The bundle to use")
        ->option_text("BUNDLE")
        ->group(group);
}

void AddOutputOptions(CLI::App& command, RenderOptions& options) {
    auto const group = "Output";
    command.add_option("--jobs", options.jobs, "Frames made at once (as many as cores)")
        ->check(WholeNumber(1, kMaxJobs))
        ->option_text("N")
        ->group(group);
    command
        .add_option("--memory", options.memory,
                    "For all frames in work together, such as 800M or 8G (most of what is free)")
        ->transform(CLI::AsSizeValue(false))
        ->check(CLI::PositiveNumber)
        ->option_text("SIZE")
        ->group(group);
    command
        .add_option("--compression", options.compression,
                    "Of PNG, 0 none to 9 smallest (" + std::to_string(options.compression) + ")")
        ->check(WholeNumber(0, host::kPngLevelMax))
        ->option_text("0..9")
        ->group(group);
    auto* overwrite =
        command.add_flag("--overwrite", options.overwrite, "Replace outputs that exist")
            ->group(group);
    command
        .add_flag("--skip-existing", options.skipExisting,
                  "Leave outputs that exist, make the rest")
        ->excludes(overwrite)
        ->group(group);
    command
        .add_option("--progress", options.progress,
                    "A bar, a line for each frame, or nothing (bar on a terminal, else none)")
        ->check(CLI::IsMember({ "bar", "lines", "none" }))
        ->option_text("bar|lines|none")
        ->group(group);
    command.add_flag("-q,--quiet", options.quiet, "Only errors")->group(group);
}

} // namespace

RenderOptions::RenderOptions() : compression(host::kPngLevelDefault) {}

void AddRenderOptions(CLI::App& command, RenderOptions& options) {
    command.description(kDescription);
    command.add_option("INPUT", options.input, "Picture, sequence, folder or -");
    command.add_option("OUTPUT", options.output, "Picture, sequence, folder or -");
    AddTextOptions(command, options.text);
    AddLookOptions(command, options);
    AddFrameOptions(command, options);
    AddSettingsOptions(command, options);
    AddOutputOptions(command, options);
    command.footer(std::string(kExamples) + kExitCodeHelp);
}

} // namespace telop
