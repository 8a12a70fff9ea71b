#!/usr/bin/env python3
"""Fails when a shipped language leaves a text of the sources untranslated,
keeps a translation no source uses, or breaks a translation's placeholders,
plural forms or keyboard accelerator.

Each .ts file is copied and brought up to date with the sources by lupdate;
the copy must then hold no unfinished, vanished or obsolete message. The
.ts files themselves are left as they are.

    check_translations.py LUPDATE SOURCE_ROOT DIR... -- TS...
"""
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET
from pathlib import Path

# Plural forms per language, as lupdate and lrelease count them.
NUMERUS_FORMS = {"es": 2, "fr": 2}
PLACEHOLDER = re.compile(r"%(?:n|L?[1-9])")
# A keyboard accelerator: "&" before a character other than a space or "&".
ACCELERATOR = re.compile(r"&(?![&\s])")


def placeholders(text):
    return sorted(set(PLACEHOLDER.findall(text or "")))


def accelerators(text):
    return len(ACCELERATOR.findall((text or "").replace("&&", "")))


def check(lupdate, root, dirs, ts):
    problems = []
    with tempfile.TemporaryDirectory() as tmp:
        copy = Path(tmp) / ts.name
        shutil.copy(ts, copy)
        run = subprocess.run([lupdate, "-locations", "none", *dirs, "-ts", str(copy)],
                             cwd=root, capture_output=True, text=True)
        if run.returncode != 0:
            return [f"lupdate failed: {run.stderr.strip()}"]
        # lupdate names a file and line for every tr() it cannot place.
        for line in (run.stderr + run.stdout).splitlines():
            if re.match(r"^\S+:\d+: ", line):
                problems.append(f"lupdate: {line}")
        tree = ET.parse(copy)
    language = tree.getroot().get("language", "")
    forms = NUMERUS_FORMS.get(language.split("_")[0])
    if forms is None:
        problems.append(f"unknown language {language!r}")
    count = 0
    for context in tree.getroot().iter("context"):
        name = context.findtext("name")
        for message in context.iter("message"):
            count += 1
            source = message.findtext("source")
            where = f"{name}: {source!r}"
            translation = message.find("translation")
            kind = translation.get("type", "")
            if kind == "unfinished":
                problems.append(f"unfinished: {where}")
                continue
            if kind in ("vanished", "obsolete"):
                problems.append(f"{kind} (no source uses it): {where}")
                continue
            if message.get("numerus") == "yes":
                texts = [f.text or "" for f in translation.iter("numerusform")]
                if forms is not None and len(texts) != forms:
                    problems.append(f"{len(texts)} plural forms, not {forms}: {where}")
            else:
                texts = [translation.text or ""]
            for text in texts:
                if not text.strip():
                    problems.append(f"empty translation: {where}")
                elif placeholders(text) != placeholders(source):
                    problems.append(f"placeholders {placeholders(text)} instead of "
                                    f"{placeholders(source)}: {where}")
                elif accelerators(text) != accelerators(source):
                    problems.append(f"{accelerators(text)} accelerators instead of "
                                    f"{accelerators(source)}: {where}")
    if count == 0:
        problems.append("no messages")
    return problems


def main(argv):
    split = argv.index("--")
    lupdate, root, dirs = argv[1], argv[2], argv[3:split]
    failed = False
    for ts in map(Path, argv[split + 1:]):
        problems = check(lupdate, root, dirs, ts)
        for problem in problems:
            print(f"{ts.name}: {problem}")
        failed = failed or bool(problems)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
