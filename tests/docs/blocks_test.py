"""Compiles and runs every block of code and of commands on a page, as a reader of the page would."""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys

TRIPLE = 'x86_64-w64-mingw32'
COMPILERS = {
    'c': [f'{TRIPLE}-gcc-posix', '-std=c11'],
    'cpp': [f'{TRIPLE}-g++-posix', '-std=c++20'],
}
# A block without an #include is the middle of a function.
FRAGMENT = '''#include "KorvuTabletSettingsAPI.h"
void Fragment(KorvuISD_Callbacks callbacks, void* context);
void Fragment(KorvuISD_Callbacks callbacks, void* context) {{
{}
}}
'''
# Commands for another operating system, and blocks that are no code.
NOT_RUN = ('bat', '')


def blocks_of(page):
    """Language, number of the first line, and text of each fenced block."""
    text = page.read_text()
    for match in re.finditer(r'^```(\w*)\n(.*?)^```$', text, re.MULTILINE | re.DOTALL):
        yield match[1], text.count('\n', 0, match.start()) + 2, match[2]


def is_command(text):
    """Commands stand in blocks without a language too."""
    return re.match(r'(cmake|scripts/|x86_64-)', text) is not None


def compile_block(language, text, arguments, main):
    file = arguments.work / f'block.{language}'
    file.write_text(text if '#include' in text else FRAGMENT.format(text))
    subprocess.run([
        *COMPILERS[language], '-Wall', '-Wextra', '-Wpedantic', '-Werror', '-fsyntax-only',
        f'-I{arguments.package / "include"}', file], check=True)
    if language == 'c' and 'int main' in text:
        main.write_text(text)


def build_project(text, arguments, main):
    project = arguments.work / 'project'
    project.mkdir()
    shutil.copy(main, project)
    (project / 'CMakeLists.txt').write_text(text)
    subprocess.run([
        'cmake', '-S', project, '-B', project / 'build', '-G', 'Ninja', '-DCMAKE_SYSTEM_NAME=Windows',
        f'-DCMAKE_C_COMPILER={COMPILERS["c"][0]}', f'-DCMAKE_PREFIX_PATH={arguments.package}'],
        check=True)
    subprocess.run(['cmake', '--build', project / 'build'], check=True)


def run_commands(text, arguments):
    # A shell takes no folder with blanks in its name from pkg-config.
    package = arguments.work / 'package'
    if not package.exists():
        package.symlink_to(arguments.package)
    environment = dict(
        os.environ, PKG_CONFIG_PATH=str(package / 'lib/pkgconfig'), CMAKE_GENERATOR='Ninja')
    script = text.replace('FOLDER_OF_THE_PACKAGE', str(package))
    script = script.replace('cmake -S', 'cmake -DCMAKE_SYSTEM_NAME=Windows'
                            f' -DCMAKE_C_COMPILER={COMPILERS["c"][0]} -S')
    subprocess.run(['sh', '-ec', script], check=True, cwd=arguments.work, env=environment)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--page', type=pathlib.Path, required=True)
    parser.add_argument('--package', type=pathlib.Path, required=True)
    parser.add_argument('--work', type=pathlib.Path, required=True)
    arguments = parser.parse_args()

    shutil.rmtree(arguments.work, ignore_errors=True)
    # The commands of the examples' page are for the folder that it is in.
    examples = arguments.package / 'share/doc/KorvuTabletSettingsAPI/examples'
    shutil.copytree(examples, arguments.work)
    application = arguments.work / 'main.c'

    blocks = list(blocks_of(arguments.page))
    for language, line, text in blocks:
        print(f'line {line}: {language or "no language"}', flush=True)
        if language in COMPILERS:
            compile_block(language, text, arguments, application)
    for language, line, text in blocks:
        print(f'line {line}', flush=True)
        if language == 'cmake':
            build_project(text, arguments, application)
        elif language == 'sh' or (language == '' and is_command(text)):
            run_commands(text, arguments)
        elif language not in COMPILERS and language not in NOT_RUN:
            raise SystemExit(f'{arguments.page}:{line}: nobody knows how to test "{language}"')
    if not blocks:
        raise SystemExit(f'{arguments.page} has no blocks')


sys.exit(main())
