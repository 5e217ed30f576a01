"""Builds an application against the package, and runs it beside the package's stand-in service."""

import argparse
import os
import pathlib
import shlex
import shutil
import subprocess
import sys

NAME = 'KorvuTabletSettingsAPI'
TRIPLE = 'x86_64-w64-mingw32'
COMPILERS = {'.c': f'{TRIPLE}-gcc-posix', '.cpp': f'{TRIPLE}-g++-posix'}
STANDARDS = {'.c': '-std=c11', '.cpp': '-std=c++20'}


def call(*command, **options):
    print('$', shlex.join(map(str, command)), flush=True)
    return subprocess.run(command, check=True, timeout=240, **options)


def build_by_cmake(arguments):
    build = arguments.work / 'build'
    call('cmake', '-S', arguments.cmake, '-B', build, '-G', 'Ninja', '-DCMAKE_SYSTEM_NAME=Windows',
         f'-DCMAKE_C_COMPILER={COMPILERS[".c"]}', f'-DCMAKE_CXX_COMPILER={COMPILERS[".cpp"]}',
         '-DCMAKE_EXE_LINKER_FLAGS=-static', f'-DCMAKE_PREFIX_PATH={arguments.package}')
    call('cmake', '--build', build)
    return build / f'{arguments.program}.exe'


def build_by_pkg_config(arguments):
    source = arguments.pkg_config
    environment = dict(os.environ, PKG_CONFIG_LIBDIR=str(arguments.package / 'lib/pkgconfig'))
    answer = call('pkg-config', '--cflags', '--libs', NAME, env=environment, stdout=subprocess.PIPE,
                  text=True).stdout
    program = arguments.work / 'application.exe'
    call(COMPILERS[source.suffix], STANDARDS[source.suffix], source, '-o', program, '-static',
         *shlex.split(answer))
    return program


def build_by_msvc_library(arguments):
    """LLVM's linker for Windows takes the library as Microsoft's does."""
    program = arguments.work / 'application.exe'
    call('clang', f'--target={TRIPLE}', '-fuse-ld=lld', '-L/usr/lib/gcc/' + TRIPLE + '/12-posix',
         STANDARDS['.c'], arguments.msvc_library, '-o', program,
         f'-I{arguments.package / "include"}', arguments.package / f'lib/{NAME}.lib')
    return program


def run_beside_service(arguments, program):
    shutil.copy(arguments.package / f'bin/{NAME}.dll', program.parent)
    service = subprocess.Popen(
        [*arguments.run, arguments.package / 'bin/korvu-settings-service.exe', '--exit-with-stdin'],
        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    try:
        if service.stdout.readline().strip() != 'ready':
            raise RuntimeError('the service did not start')
        call(*arguments.run, program)
    finally:
        service.stdin.close()
        service.wait(60)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--package', type=pathlib.Path, required=True)
    parser.add_argument('--work', type=pathlib.Path, required=True)
    parser.add_argument('--run', nargs='*', default=[], help='what runs Windows programs')
    parser.add_argument('--program', help='the program that the CMake project builds')
    way = parser.add_mutually_exclusive_group(required=True)
    way.add_argument('--cmake', type=pathlib.Path, metavar='FOLDER')
    way.add_argument('--pkg-config', type=pathlib.Path, metavar='SOURCE')
    way.add_argument('--msvc-library', type=pathlib.Path, metavar='SOURCE')
    arguments = parser.parse_args()

    shutil.rmtree(arguments.work, ignore_errors=True)
    arguments.work.mkdir(parents=True)
    if arguments.cmake:
        program = build_by_cmake(arguments)
    elif arguments.pkg_config:
        program = build_by_pkg_config(arguments)
    else:
        program = build_by_msvc_library(arguments)
    run_beside_service(arguments, program)


sys.exit(main())
