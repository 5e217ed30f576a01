"""Plants the faults of table.txt one at a time in a copy of the sources, and has the simulator look
for each. Usage: plant.py TREE SIMULATION [TEXT...]; TREE is the folder for the copy, and
of several texts a fault's name must have one."""

import pathlib
import re
import shutil
import subprocess
import sys
import time

LIVES = 5000
ROOT = pathlib.Path(__file__).resolve().parents[3]
TABLE = ROOT / "tests/simulation/planted/table.txt"


def read_table():
    faults = []
    for line in TABLE.read_text().splitlines():
        mark, text = line[:1], line[2:].replace("\\n", "\n")
        if mark == "!":
            faults.append((text, []))
        elif mark == "@":
            file = text
        elif mark == "-":
            old = text
        elif mark == "+":
            faults[-1][1].append((file, old, text))
    return faults


def changed(name, changes):
    """The changed files by path."""
    texts = {}
    for file, old, new in changes:
        text = texts.get(file) or (ROOT / file).read_text()
        if text.count(old) != 1:
            sys.exit(f'plant: {name}: "{old}" does not stand exactly once in {file}')
        texts[file] = text.replace(old, new)
    return texts


def build(tree):
    command = ["cmake", "--build", "--preset", "linux-asan", "--target", "korvu_simulated_library"]
    return subprocess.run(command, cwd=tree, capture_output=True, text=True)


def copy_if_changed(source, target):
    """With a new time: what was compiled of the other text must be compiled again."""
    source, target = pathlib.Path(source), pathlib.Path(target)
    if not target.exists() or target.read_bytes() != source.read_bytes():
        shutil.copy(source, target)


def configure(tree):
    for part in ["CMakeLists.txt", "CMakePresets.json", "cmake", "include", "src", "tests", "tools"]:
        source = ROOT / part
        if source.is_dir():
            shutil.copytree(source, tree / part, copy_function=copy_if_changed, dirs_exist_ok=True)
        else:
            copy_if_changed(source, tree / part)
    command = ["cmake", "--preset", "linux-asan"]
    subprocess.run(command, cwd=tree, check=True, capture_output=True)


def look(simulation, library):
    command = [simulation, str(LIVES), "--jobs", "2", "--no-known-seeds", "--no-shrinking", "--library", library]
    output = subprocess.run(command, capture_output=True, text=True).stdout
    lives = re.search(r"^(\d+) lives", output)
    broken = re.search(r"^seed (\d+) breaks promise (\d+): (.*)$", output, re.MULTILINE)
    return int(lives[1]) if lives else 0, broken


def main():
    tree, simulation = pathlib.Path(sys.argv[1]), sys.argv[2]
    wanted = sys.argv[3:] or [""]
    tree.mkdir(parents=True, exist_ok=True)
    configure(tree)
    library = str(tree / "build/linux-asan/bin/korvu_simulated_library.so")
    faults = [fault for fault in read_table() if any(text in fault[0] for text in wanted)]
    found = 0
    missed = 0
    for number, (name, changes) in enumerate(faults, 1):
        texts = changed(name, changes)
        for file, text in texts.items():
            # A fault may leave something unused, or unlocked that the compiler can see.
            quiet = '#pragma clang diagnostic ignored "-Weverything"\n'
            (tree / file).write_text(quiet + text)
        built = build(tree)
        if built.returncode != 0:
            sys.exit(f"plant: does not compile: {name}\n{built.stdout[-3000:]}")
        began = time.time()
        lives, broken = look(simulation, library)
        if broken:
            found += 1
            verdict = f"found after {lives} lives: seed {broken[1]}, promise {broken[2]}: {broken[3][:90]}"
        else:
            missed += "(not found yet)" not in name
            verdict = f"NOT FOUND in {lives} lives"
        print(f"{number:2} {name}: {verdict} ({time.time() - began:.1f} s)", flush=True)
        for file in texts:
            shutil.copy(ROOT / file, tree / file)
    print(f"{found} of {len(faults)} found")
    sys.exit(1 if missed else 0)


main()
