#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Turns the times of telop-bench, telop-bench-dispatch, telop-bench-preview and render_programs.py
into tables of ratios beside their limits, prints them, and writes them into README.md between its two markers."""

import argparse
import json
import os
import platform
import statistics
import subprocess
from collections import defaultdict
from pathlib import Path

BEGIN = "<!-- results -->"
END = "<!-- end of results -->"

CASES = {
    "score-100": "Score box, 10 characters, 100 %",
    "score-50": "Score box, 10 characters, 50 %",
    "latin": "4 lines of 40 Latin characters, 50 %",
    "japanese": "4 lines of 31 Japanese characters (CP932), 50 %",
    "japanese-utf8": "4 lines of 21 Japanese characters (UTF-8), 50 %",
}
RENDERERS = {
    "effect": "DoFilter",
    "blend": "bare blend",
    "cairo": "Cairo + Pango",
    "cairo-kept": "Cairo, layout kept",
    "qt": "Qt painter",
    "drawtext": "drawtext",
}
DISPATCHES = {
    "handlers/1": "one handler",
    "handlers/3": "three handlers",
    "handlers/10": "ten handlers",
    "objects/1": "one object of the toolkit",
    "objects/3": "three objects of the toolkit",
    "unwanted/3": "three handlers, none of which wants it",
    "command": "a command up three targets, which nobody wants",
    "made": "made, with a parameter, three handlers, released",
}
PREVIEWS = {
    "keystroke/50": "a keystroke, at 50 %",
    "keystroke/100": "a keystroke, at 100 %",
    "drag/50": "a drag step, at 50 %",
    "drag/100": "a drag step, at 100 %",
    "pan/100": "a step of the hand, at 100 %",
    "pan/200": "a step of the hand, at 200 %",
    "dialog-keystroke/50": "a key in the real dialog, at 50 %",
    "dialog-keystroke/100": "a key in the real dialog, at 100 %",
    "dialog-drag/50": "a drag step in the real dialog, at 50 %",
    "dialog-drag/100": "a drag step in the real dialog, at 100 %",
}
CACHES = {
    "pictures": "a text that stays: its picture is found again",
    "older-pictures": "a counter: only the digits that changed are drawn",
    "lines": "a new line, which is measured and drawn: it is laid out once",
    "names": "a text that stays: the name of its font is known",
    "recent": "looking up what a thread used last, beside another one",
    "admission": "pictures that never come again: they stay out of the cache",
    "vectors": "colouring a picture in vectors",
}
AREA_CASES = ["score-100", "score-50", "latin"]

UNCHANGED_TO_BLEND = 1.8
UNCHANGED_TO_CAIRO = 0.6
CHANGING_TO_CAIRO = 0.8
TO_DRAWTEXT = 0.1
TO_FFMPEG = 1.0
TO_MOGRIFY = 0.25
TWO_THREADS = 1.8
SPREAD_OF_FRAME_SIZES = 1.2
GROWTH_OF_PIXEL_COST = 1.5  # the larger rectangle does not fit into the processor's own cache
START_SECONDS = 0.020
LOAD_SECONDS = 0.010
SAVED = 0.1  # of the case that a cache is for
UNWANTED_ALLOCATIONS = 0.0
DISPLAY_FRAME = 16e6  # nanoseconds
DISPLAY_FRAMES = 1.0
BUSY = 1.05  # time of the clock for each of the processor, from which on others had a share


class Bench:
    """What telop-bench measured, by name. A virtual machine's cores change between a fast and a slow
    state, which its neighbours bring about. Repetitions in random order meet both alike, so that their
    mean compares fairly; a median falls into one state or the other."""

    def __init__(self, path):
        found = json.loads(path.read_text())
        runs = defaultdict(list)
        for run in found["benchmarks"]:
            if run.get("error_occurred"):
                raise SystemExit(f"report: {run['name']}: {run['error_message']}")
            if run["run_type"] == "iteration":
                runs[run["run_name"]].append(run)
        self.runs = runs

    def values(self, name, field):
        if name not in self.runs:
            raise SystemExit(f"report: there is no measurement {name}")
        return [run[field] for run in self.runs[name]]

    def time(self, name):
        """Nanoseconds of the processor for one frame: the mean without the outermost fifths."""
        times = sorted(self.values(name, "cpu_time"))
        cut = len(times) // 5
        return statistics.mean(times[cut:len(times) - cut])

    def median(self, name, counter):
        return statistics.median(self.values(name, counter))

    def clock_share(self):
        """Time of the clock for each of the processor, over the measurements on one thread."""
        runs = [run for name, runs in self.runs.items() if name.startswith("text/") for run in runs]
        return sum(run["real_time"] for run in runs) / sum(run["cpu_time"] for run in runs)

    def text(self, case, bits, renderer, content="unchanged"):
        """Of drawtext, what the filter adds to a graph that does nothing."""
        name = f"text/{case}/{bits}/{renderer}/{content}"
        if name not in self.runs:
            return None
        if renderer == "drawtext":
            return self.time(name) - self.time(f"text/{case}/{bits}/null-graph/unchanged")
        return self.time(name)


class Check:
    """One ratio, or one figure, beside its limit."""

    def __init__(self, what, value, limit, at_least=False, form="{:.2f}"):
        self.what = what
        self.value = value
        self.limit = limit
        self.at_least = at_least
        self.form = form

    def met(self):
        return self.value >= self.limit if self.at_least else self.value <= self.limit

    def bound(self):
        return ("at least " if self.at_least else "at most ") + self.form.format(self.limit)

    def shown(self):
        value = self.form.format(self.value)
        return value if self.met() else f"**{value} not met**"


def frame_sizes(bench, case):
    return {name.split("/")[2]: bench.time(name) for name in bench.runs
            if name.startswith(f"frame/{case}/")}


def pixel_costs(bench, case):
    """Nanoseconds for each pixel of the text's rectangle, by font size."""
    return {int(name.split("/")[2]): bench.time(name) / bench.median(name, "pixels")
            for name in bench.runs if name.startswith(f"area/{case}/")}


def thread_gain(bench, case, content):
    """Of the rounds in which one thread and two take turns, the middle one."""
    name = next((n for n in bench.runs if n.startswith(f"threads/{case}/{content}/")), "threads")
    return bench.median(name, "gain")


def text_checks(bench, case):
    def ratio(bits, content, other, others_content=None):
        return bench.text(case, bits, "effect", content) / bench.text(
            case, bits, other, others_content or content)

    sizes = frame_sizes(bench, case).values()
    return [
        Check("unchanged / bare blend", ratio(8, "unchanged", "blend"), UNCHANGED_TO_BLEND),
        Check("the same, 16 bits", ratio(16, "unchanged", "blend"), UNCHANGED_TO_BLEND),
        Check("unchanged / Cairo + Pango", ratio(8, "unchanged", "cairo"), UNCHANGED_TO_CAIRO),
        Check("changing / Cairo + Pango", ratio(8, "changing", "cairo"), CHANGING_TO_CAIRO),
        Check("unchanged / drawtext", ratio(8, "unchanged", "drawtext"), TO_DRAWTEXT,
              form="{:.3f}"),
        Check("changing / drawtext", ratio(8, "changing", "drawtext"), TO_DRAWTEXT,
              form="{:.3f}"),
        Check("slowest / fastest frame size", max(sizes) / min(sizes), SPREAD_OF_FRAME_SIZES),
        Check("two threads / one", thread_gain(bench, case, "unchanged"), TWO_THREADS,
              at_least=True),
    ]


def area_checks(bench):
    def growth(case):
        costs = pixel_costs(bench, case)
        return costs[144] / costs[36]

    return [Check(f"{CASES[case]}: cost of a pixel at 144 points / at 36", growth(case),
                  GROWTH_OF_PIXEL_COST) for case in AREA_CASES]


def program_checks(programs):
    def seconds_a_frame(name):
        entry = programs["programs"][name]
        return statistics.median(entry["seconds"]) / entry["frames"]

    def ratio(other):
        return seconds_a_frame("telop") / seconds_a_frame(other)

    def milliseconds(what, values, limit):
        return Check(what, statistics.median(values) * 1e3, limit * 1e3, form="{:.1f} ms")

    starts = programs["starts"]
    return [
        Check("telop render / ffmpeg with drawtext, time of a frame", ratio("ffmpeg"), TO_FFMPEG),
        Check("telop render / mogrify, time of a frame", ratio("mogrify"), TO_MOGRIFY),
        milliseconds("telop render, one picture of 16 x 16", starts["render"], START_SECONDS),
        milliseconds("telop --help", starts["help"], START_SECONDS),
        milliseconds("loading the plug-in and Init", programs["loads"], LOAD_SECONDS),
    ]


def cache_times(bench, name):
    """With it and without it. What several threads measure has their number in its name."""
    return [next(bench.time(run) for run in bench.runs if run.split("/threads")[0] == wanted)
            for wanted in (f"cache/{name}/with", f"cache/{name}/without")]


def cache_checks(bench):
    def saved(name):
        with_it, without = cache_times(bench, name)
        return 1 - with_it / without

    return [Check(f"{what}: saves", saved(name), SAVED, at_least=True)
            for name, what in CACHES.items()]


def dispatch_checks(dispatch):
    return [Check(f"an event on its way to {DISPATCHES[name]}: allocations",
                  dispatch.median(f"dispatch/{name}", "allocations"), UNWANTED_ALLOCATIONS)
            for name in ["unwanted/3"]]


def preview_checks(preview):
    return [Check(f"preview of 1920x1080, {what}: share of a display frame of 16 ms",
                  preview.time(f"preview/{name}") / DISPLAY_FRAME, DISPLAY_FRAMES)
            for name, what in PREVIEWS.items()]


def table(head, rows):
    line = "|" + "|".join(" --- " if i == 0 else " ---: " for i in range(len(head))) + "|"
    return ["| " + " | ".join(head) + " |", line] + ["| " + " | ".join(row) + " |" for row in rows]


def microseconds(value):
    if value is None:
        return "-"
    value /= 1e3
    return f"{value:.2f}" if value < 10 else f"{value:.1f}" if value < 100 else f"{value:.0f}"


def text_times(bench, bits):
    shown = [r for r in RENDERERS if any(bench.text(case, bits, r) for case in CASES)]
    rows = []
    for case, name in CASES.items():
        for content in ["unchanged", "changing"]:
            times = [bench.text(case, bits, renderer, content) for renderer in shown]
            rows.append([name + ("" if content == "unchanged" else ", changing")]
                        + [microseconds(time) for time in times])
    return table(["Microseconds a frame"] + [RENDERERS[r] for r in shown], rows)


def scaling_times(bench):
    rows = []
    for case, name in CASES.items():
        sizes = frame_sizes(bench, case)
        rows.append([name]
                    + [microseconds(sizes[s]) for s in ["1280x720", "1920x1080", "3840x2160"]]
                    + [f"{thread_gain(bench, case, c):.2f}" for c in ["unchanged", "changing"]])
    head = ["DoFilter", "1280x720, µs", "1920x1080, µs", "3840x2160, µs", "two threads / one",
            "the same, changing"]
    return table(head, rows)


def area_times(bench):
    rows = []
    for case in AREA_CASES:
        costs = pixel_costs(bench, case)
        rows.append([CASES[case]] + [f"{costs[size]:.3f}" for size in sorted(costs)])
    sizes = sorted(pixel_costs(bench, AREA_CASES[0]))
    head = ["Nanoseconds a pixel of the rectangle"] + [f"{size} points" for size in sizes]
    return table(head, rows)


def cache_table(bench):
    rows = [[what] + [microseconds(time) for time in cache_times(bench, name)]
            for name, what in CACHES.items()]
    return table(["Microseconds", "with the cache", "without"], rows)


def program_times(programs):
    rows = []
    for name, entry in programs["programs"].items():
        rows.append([name, str(entry["frames"]), f"{statistics.median(entry['seconds']):.2f}",
                     f"{statistics.median(entry['processor']):.2f}",
                     f"{max(entry['memory']) / 2**20:.0f}",
                     f"{entry['bytes'] / entry['frames'] / 1e6:.2f}"])
    given = programs["frames"]
    head = [f"Files of {given['bytes'] / given['count'] / 1e6:.2f} MB", "frames", "seconds",
            "processor seconds", "memory, MiB", "MB a frame written"]
    return table(head, rows)


def dispatch_times(dispatch):
    def row(name, what):
        def median(field):
            return dispatch.median(f"dispatch/{name}", field)

        return [what, f"{median('items_per_second') / 1e6:.1f}", f"{median('cpu_time'):.0f}",
                f"{median('allocations'):.1f}"]

    head = ["An event", "million a second", "nanoseconds", "allocations"]
    return table(head, [row(name, what) for name, what in DISPATCHES.items()])


def output_of(*command):
    try:
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()
    except (OSError, subprocess.CalledProcessError):
        return "unknown"


def version_of(package):
    return output_of("dpkg-query", "-W", "-f", "${Version}", package)


def processor_name():
    for line in Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.machine()


def machine(bench, programs):
    libraries = {"FreeType": "libfreetype-dev", "HarfBuzz": "libharfbuzz-dev",
                 "Cairo": "libcairo2-dev", "Pango": "libpango1.0-dev", "Qt": "qt6-base-dev",
                 "libavfilter": "libavfilter-dev"}
    versions = ", ".join(f"{name} {version_of(package)}" for name, package in libraries.items())
    repetitions = max(len(runs) for runs in bench.runs.values())
    return [
        f"- {processor_name()}, {os.cpu_count()} cores; time of the clock / of the processor "
        f"{bench.clock_share():.2f}",
        f"- {platform.freedesktop_os_release()['PRETTY_NAME']}, Linux {platform.release()}, "
        + output_of("g++", "--version").splitlines()[0],
        f"- {versions}",
        f"- {programs['versions']['ffmpeg']}, {programs['versions']['mogrify']}",
        f"- means of {repetitions} repetitions in random order, on one core each",
    ]


def report(bench, programs, dispatch, preview):
    by_case = {case: text_checks(bench, case) for case in CASES}
    others = (area_checks(bench) + cache_checks(bench) + program_checks(programs) + dispatch_checks(dispatch)
              + preview_checks(preview))
    checks = [check for row in by_case.values() for check in row] + others
    missed = sum(not check.met() for check in checks)
    columns = next(iter(by_case.values()))
    head = ["DoFilter"] + [f"{check.what} ({check.bound()})" for check in columns]
    lines = [f"{len(checks) - missed} of {len(checks)} limits met.", ""]
    if bench.clock_share() > BUSY:
        lines += ["**Other programs kept the machine busy: threads and programs are slower here "
                  "than they are.**", ""]
    lines += table(head, [[CASES[case]] + [check.shown() for check in row]
                          for case, row in by_case.items()])
    lines += [""] + table(["Besides", "measured", "limit"],
                          [[check.what, check.shown(), check.bound()] for check in others])
    for title, part in [("8 bits a channel", text_times(bench, 8)),
                        ("16 bits a channel", text_times(bench, 16)),
                        ("Frame size and threads", scaling_times(bench)),
                        ("Area", area_times(bench)),
                        ("Caches", cache_table(bench)),
                        ("Programs", program_times(programs)),
                        ("Dispatch", dispatch_times(dispatch)),
                        ("Machine", machine(bench, programs))]:
        lines += ["", f"### {title}", ""] + part
    return "\n".join(lines)


def update(readme, text):
    before, rest = readme.read_text().split(BEGIN)
    _, after = rest.split(END)
    readme.write_text(f"{before}{BEGIN}\n\n{text}\n\n{END}{after}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("bench", type=Path, help="JSON of telop-bench")
    parser.add_argument("programs", type=Path, help="JSON of render_programs.py")
    parser.add_argument("dispatch", type=Path, help="JSON of telop-bench-dispatch")
    parser.add_argument("preview", type=Path, help="JSON of telop-bench-preview")
    parser.add_argument("--readme", type=Path, help="the file to write the tables into")
    args = parser.parse_args()
    text = report(Bench(args.bench), json.loads(args.programs.read_text()), Bench(args.dispatch),
                  Bench(args.preview))
    print(text)
    if args.readme:
        update(args.readme, text)


if __name__ == "__main__":
    main()
