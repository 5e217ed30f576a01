"""Everything in the package that states a version states the project's."""

import argparse
import os
import pathlib
import struct
import subprocess
import sys
import tempfile

NAME = 'KorvuTabletSettingsAPI'


def resource_versions(path):
    """The two versions in the fixed part of a file's version resource, and its two texts."""
    data = path.read_bytes()
    start = data.index(struct.pack('<II', 0xFEEF04BD, 0x00010000))
    numbers = struct.unpack_from('<4I', data, start + 8)
    for high, low in (numbers[:2], numbers[2:]):
        yield f'{high >> 16}.{high & 0xFFFF}.{low >> 16}'
    for name in ('FileVersion', 'ProductVersion'):
        key = (name + '\0').encode('utf-16-le')
        text = data[data.index(key, start) + len(key):]
        yield text[:64].decode('utf-16-le').lstrip('\0').split('\0')[0]


def output_of(command, **options):
    return subprocess.run(
        command, check=True, stdout=subprocess.PIPE, text=True, timeout=120, **options).stdout.strip()


def cmake_version(package):
    with tempfile.TemporaryDirectory() as folder:
        script = pathlib.Path(folder, 'version.cmake')
        script.write_text('set(CMAKE_SIZEOF_VOID_P 8)\n'
                          f'set(PACKAGE_FIND_VERSION_MAJOR 0)\ninclude("{package.as_posix()}'
                          f'/lib/cmake/{NAME}/{NAME}ConfigVersion.cmake")\n'
                          'message(NOTICE "${PACKAGE_VERSION}")\n')
        return output_of(['cmake', '-P', script], stderr=subprocess.STDOUT)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--package', type=pathlib.Path, required=True)
    parser.add_argument('--version', required=True)
    parser.add_argument('--run', nargs='*', default=[], help='what runs Windows programs')
    arguments = parser.parse_args()
    programs = arguments.package / 'bin'

    stated = []
    for program in (f'{NAME}.dll', 'korvu-settings.exe', 'korvu-settings-panel.exe',
                    'korvu-settings-service.exe'):
        stated += [(f'resource of {program}', v) for v in resource_versions(programs / program)]
    for program in ('korvu-settings.exe', 'korvu-settings-service.exe'):
        printed = output_of([*arguments.run, programs / program, '--version'])
        stated.append((f'{program} --version', printed.split()[-1]))
    pkg_config = dict(os.environ, PKG_CONFIG_LIBDIR=str(arguments.package / 'lib/pkgconfig'))
    stated.append(('pkg-config', output_of(['pkg-config', '--modversion', NAME], env=pkg_config)))
    stated.append(('CMake package', cmake_version(arguments.package)))

    for where, version in stated:
        print(f'{where}: {version}')
    return 0 if all(version == arguments.version for _, version in stated) else 1


sys.exit(main())
