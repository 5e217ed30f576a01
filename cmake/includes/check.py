"""check.py BUILD [--fix] [TEXT...]: does every file of src/ and tools/ include what it names, and
nothing else? Asks include-what-you-use, with the compilation commands in BUILD, which must not name
precompiled headers. With --fix, changes the files. With texts, looks only at sources whose path has
one of them."""

import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
IWYU = [
    'include-what-you-use',
    '-w',  # warnings are the compilers' business
    '-Xiwyu', '--no_fwd_decls',  # a declaration by hand is one more place to change
    '-Xiwyu', '--cxx17ns',
    '-Xiwyu', '--max_line_length=100000',  # all names, which the comments list
    '-Xiwyu', f'--mapping_file={HERE}/mapping.imp',
    '-Xiwyu', '--mapping_file=/usr/share/include-what-you-use/stl.c.headers.imp',
]
# More than one header of the C library has these.
ANYWHERE = {'errno', 'ptrdiff_t', 'wcstol'}


def commands(build, texts):
    for entry in json.loads((build / 'compile_commands.json').read_text()):
        file = pathlib.Path(entry['file'])
        own = any(file.is_relative_to(ROOT / folder) for folder in ('src', 'tools'))
        if own and file.suffix == '.cpp' and (not texts or any(text in str(file) for text in texts)):
            # The first word is the compiler, or two are, with one that caches before it.
            words = entry['command'].split()
            while not words[0].startswith('-'):
                words.pop(0)
            yield file, entry['directory'], [word.replace('\\"', '"') for word in words]


def ask(command):
    file, directory, words = command
    # Its exit status says nothing: it is 2 when all is well.
    run = subprocess.run([*IWYU, *words], cwd=directory, capture_output=True, text=True)
    if ' error: ' in run.stderr:
        raise SystemExit(f'includes: {file}: {run.stderr}')
    return run.stderr


def is_named(file, line):
    """Whether the file names what it needs the include for. The members of what others declare, and
    what a template asks for, come with their headers."""
    names = set(line.partition('// for ')[2].split(', ')) - ANYWHERE
    words = set(re.findall(r'\w+', file.read_text()))
    return any(name.split('::')[-1] in words for name in names)


def cplusplus(include):
    """<cstdint> for <stdint.h>: the C++ name of a header of the C library."""
    if include == '<iosfwd>':
        return '<string>'  # it declares the strings, too
    return re.sub(r'^<(errno|math|stdarg|stddef|stdint|stdio|stdlib|string|time|wchar|wctype)\.h>$', r'<c\1>', include)


def changes(text):
    """File, "add" or "remove", and the include, for each that is missing or not used."""
    section = None
    for line in text.splitlines():
        head = re.match(r'(/.*) should (add|remove) these lines:', line)
        if head:
            section = head.groups()
        elif line.startswith('The full include-list'):
            section = None
        elif section and (include := re.search(r'#include (<[^>]+>|"[^"]+")', line)):
            file, what = pathlib.Path(section[0]), section[1]
            if what == 'remove' or is_named(file, line):
                yield file, what, cplusplus(include[1])


def fix(file, complaints):
    lines = file.read_text().splitlines()
    for what, include in complaints:
        line = f'#include {include}'
        if what == 'remove':
            lines.remove(line)
        elif line not in lines:
            # The formatter puts it where it belongs.
            first = [i for i, each in enumerate(lines) if each.startswith('#include ')]
            guard = [i for i, each in enumerate(lines) if each == '#pragma once']
            at = first[-1] + 1 if first else guard[0] + 1 if guard else 0
            lines[at:at] = [line] if first else ['', line]
    file.write_text('\n'.join(lines) + '\n')
    subprocess.run(['clang-format', '-i', file], check=True)


def main():
    options = [word for word in sys.argv[1:] if word.startswith('--')]
    build, *texts = [word for word in sys.argv[1:] if not word.startswith('--')]
    found = {}
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for text in pool.map(ask, commands(pathlib.Path(build), texts)):
            for file, what, include in changes(text):
                if file.is_relative_to(ROOT):
                    found.setdefault(file, set()).add((what, include))
    wrong = 0
    for file, complaints in sorted(found.items()):
        # Asked for under its C name, and there under the other one.
        for include in [include for what, include in complaints if what == 'remove']:
            if ('add', include) in complaints:
                complaints -= {('add', include), ('remove', include)}
        present = set(re.findall(r'^#include (\S+)', file.read_text(), re.MULTILINE))
        complaints -= {('add', include) for include in present}
        wrong += len(complaints)
        if '--fix' in options:
            fix(file, sorted(complaints))
        for what, include in sorted(complaints):
            print(f'{file.relative_to(ROOT)}: {what} #include {include}')
    return 1 if wrong else 0


sys.exit(main())
