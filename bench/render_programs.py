#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Times whole programs: telop, ffmpeg and mogrify burning a score line into the same picture files,
the start of telop, and the loading of the plug-in. Writes the times as JSON for report.py."""

import argparse
import json
import os
import shutil
import struct
import subprocess
import sys
import time
import zlib
from pathlib import Path

ROUNDS = {"telop": 5, "ffmpeg": 3, "mogrify": 1}
MOGRIFY_FRAMES = 20  # it takes seconds for each
STARTS = 25
FONT = "DejaVu Sans"
SIZE = 36
LEFT, TOP = 54, 41


def font_file():
    found = subprocess.run(["fc-match", "-f", "%{file}", FONT], capture_output=True, text=True)
    return found.stdout.strip()


def telop(args, out):
    return [args.telop, "render", "--score", "0", "--strings", ",,5,{frame}", "--font", FONT,
            "--size", str(SIZE), "--color", "#ffffff", "--box", "#000000", "--opacity", "100",
            "--at", f"{LEFT},{TOP}", "--quiet",
            f"{args.frames}/shot.%04d.png", f"{out}/shot.%04d.png"]


def ffmpeg(args, out):
    text = r"'C-005-%{eif\:n+1\:d\:4}'"  # quoted against the filter's own colons
    draw = (f"drawtext=font={FONT}:fontsize={SIZE}:fontcolor=white:box=1:boxcolor=black"
            f":x={LEFT}:y={TOP}:text={text}")
    return ["ffmpeg", "-v", "error", "-i", f"{args.frames}/shot.%04d.png", "-vf", draw,
            f"{out}/shot.%04d.png"]


def mogrify(args, out):
    frames = sorted(str(path) for path in args.frames.glob("*.png"))[:MOGRIFY_FRAMES]
    return ["mogrify", "-path", str(out), "-font", font_file(), "-pointsize", str(SIZE), "-fill",
            "white", "-undercolor", "black", "-gravity", "NorthWest", "-annotate",
            f"+{LEFT}+{TOP}", "C-005-0012", *frames]


PROGRAMS = {"telop": telop, "ffmpeg": ffmpeg, "mogrify": mogrify}


def run(command):
    """Seconds on the clock, seconds of the processor and the most memory in bytes."""
    start = time.perf_counter()
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.perf_counter() - start
    process.stdout.close()
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"render_programs: {command[0]} ended with {process.returncode}")
    return seconds, usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024


def time_programs(args, results):
    given = len(list(args.frames.glob("*.png")))
    for turn in range(max(ROUNDS.values())):
        for name, command in PROGRAMS.items():
            if turn >= ROUNDS[name]:
                continue
            out = args.work / name
            shutil.rmtree(out, ignore_errors=True)
            out.mkdir(parents=True)
            seconds, processor, memory = run(command(args, out))
            written = list(out.glob("*.png"))
            expected = min(given, MOGRIFY_FRAMES) if name == "mogrify" else given
            if len(written) != expected:
                sys.exit(f"render_programs: {name} wrote {len(written)} of {expected} frames")
            entry = results.setdefault(name, {"seconds": [], "processor": [], "memory": []})
            entry["frames"] = expected
            entry["seconds"].append(seconds)
            entry["processor"].append(processor)
            entry["memory"].append(memory)
            entry["bytes"] = sum(path.stat().st_size for path in written)
            print(f"  {name}: {seconds:.2f} s", file=sys.stderr)


def write_small_picture(path):
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    row = b"\0" + b"\x40\x60\x80" * 16
    path.write_bytes(b"\x89PNG\r\n\x1a\n"
                     + chunk(b"IHDR", struct.pack(">IIBBBBB", 16, 16, 8, 2, 0, 0, 0))
                     + chunk(b"IDAT", zlib.compress(row * 16)) + chunk(b"IEND", b""))


def time_starts(args):
    small, burnt = args.work / "small.png", args.work / "burnt.png"
    write_small_picture(small)
    render = [args.telop, "render", "--score", "0", "--strings", ",,5,12", "--font", FONT,
              "--at", "0,0", "--overwrite", "--quiet", str(small), str(burnt)]
    commands = {"help": [args.telop, "--help"], "render": render}
    for command in commands.values():
        run(command)
    return {name: [run(command)[0] for _ in range(STARTS)] for name, command in commands.items()}


def time_loads(args):
    def load():
        out = subprocess.run([args.loader, args.module], check=True, capture_output=True, text=True)
        return float(out.stdout) * 1e-6

    load()
    return [load() for _ in range(STARTS)]


def version(*command):
    return subprocess.run(command, capture_output=True, text=True).stdout.splitlines()[0].strip()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--telop", required=True, help="the program")
    parser.add_argument("--loader", required=True, help="telop-bench-load")
    parser.add_argument("--module", required=True, help="the plug-in's module")
    parser.add_argument("--frames", required=True, type=Path, help="folder of shot.0001.png ...")
    parser.add_argument("--work", required=True, type=Path, help="folder for the results")
    parser.add_argument("--out", required=True, type=Path, help="the JSON file")
    args = parser.parse_args()
    args.work.mkdir(parents=True, exist_ok=True)

    results = {"programs": {}}
    results["loads"] = time_loads(args)
    results["starts"] = time_starts(args)
    time_programs(args, results["programs"])
    frames = list(args.frames.glob("*.png"))
    results["frames"] = {"count": len(frames), "bytes": sum(f.stat().st_size for f in frames)}
    magick = version("mogrify", "--version").removeprefix("Version: ")
    results["versions"] = {"ffmpeg": version("ffmpeg", "-version").split(" Copyright")[0],
                           "mogrify": magick.split(" https")[0]}
    args.out.write_text(json.dumps(results, indent=1))


if __name__ == "__main__":
    main()
