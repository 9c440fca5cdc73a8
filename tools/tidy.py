#!/usr/bin/env python3
"""Runs clang-tidy over library, tool, Python module and examples as a build folder compiles them, several at a time; of
benchmarks and quality runs it only sees the warnings of the compiler.

usage: tools/tidy.py BUILD_FOLDER [JOBS]

The build folder should join sources (CMAKE_UNITY_BUILD), since most of the time goes into the headers they share. What
passed is remembered by what the compiler sees of it, together with the checks in .clang-tidy and the version of
clang-tidy, and isn't looked at again until one of these changes. The memory is in
$XDG_CACHE_HOME/ormelle-tidy (~/.cache by default) and may be deleted at any time.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("src", "tool", "python", "examples")  # of the build folder
ONLY_WARNINGS = ("bench", "quality")
CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache") / "ormelle-tidy"


def words_of(entry):
    return entry.get("arguments") or shlex.split(entry["command"])


def output_of(entry):
    words = words_of(entry)
    return pathlib.PurePath(words[words.index("-o") + 1])


def compiler(entry):
    """The words that compile a source, but for those that say what becomes of it."""
    words = words_of(entry)
    if os.path.basename(words[0]) == "ccache":
        del words[0]
    output = words.index("-o")
    del words[output:output + 2]
    words.remove("-c")
    return words


def preprocessed(entry):
    """The text of a source after its includes and macros, as bytes; None if it can't be had."""
    result = subprocess.run(compiler(entry) + ["-E", "-w"], cwd=entry["directory"], capture_output=True)
    # Line markers hold the path of the checkout, which doesn't matter.
    return result.stdout.replace(os.fsencode(ROOT), b"") if result.returncode == 0 else None


def check(entry, build, salt):
    """Returns the findings on one source, an empty text if there are none."""
    text = preprocessed(entry)
    passed = CACHE / hashlib.sha256(salt + text).hexdigest() if text is not None else None
    if passed and passed.exists():
        passed.touch()
        return ""
    if output_of(entry).parts[0] in ONLY_WARNINGS:
        command, folder = compiler(entry) + ["-fsyntax-only"], entry["directory"]
    else:
        command, folder = ["clang-tidy", "--quiet", "-p", build, entry["file"]], ROOT
    result = subprocess.run(command, cwd=folder, capture_output=True, text=True)
    if result.returncode == 0 and not result.stdout.strip():
        if passed:
            passed.touch()
        return ""
    return result.stdout + (result.stderr if result.returncode and not result.stdout.strip() else "")


def forget_old():
    month_ago = time.time() - 30 * 86400
    for mark in CACHE.iterdir():
        if mark.stat().st_mtime < month_ago:
            mark.unlink()


def main():
    build = sys.argv[1]
    jobs = int(sys.argv[2]) if len(sys.argv) > 2 else os.cpu_count()
    commands = json.loads((pathlib.Path(build) / "compile_commands.json").read_text())
    entries = [entry for entry in commands if output_of(entry).parts[0] in FOLDERS + ONLY_WARNINGS]
    version = subprocess.run(["clang-tidy", "--version"], capture_output=True, check=True).stdout
    salt = version + (ROOT / ".clang-tidy").read_bytes()
    CACHE.mkdir(parents=True, exist_ok=True)
    forget_old()

    start, findings = time.monotonic(), []
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        futures = [pool.submit(check, entry, build, salt) for entry in entries]
        for done, future in enumerate(concurrent.futures.as_completed(futures), 1):
            if future.result():
                findings.append(future.result())
                print(future.result().rstrip(), flush=True)
            if done % 5 == 0 or done == len(entries):
                left = (time.monotonic() - start) * (len(entries) - done) / done
                print(f"[{done}/{len(entries)}, {left:.0f} s left] clang-tidy", flush=True)
    if findings:
        print(f"clang-tidy objects to {len(findings)} of {len(entries)} groups of sources")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
