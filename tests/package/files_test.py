"""The package has every file that an application author is promised, and nothing of the build."""

import argparse
import pathlib
import re
import sys

DOC = 'share/doc/KorvuTabletSettingsAPI/'
NAME = 'KorvuTabletSettingsAPI'
PROMISED = [
    f'bin/{NAME}.dll',
    'bin/korvu-settings.exe',
    'bin/korvu-settings-panel.exe',
    'bin/korvu-settings-service.exe',
    f'include/{NAME}.h',
    'include/korvu/settings.hpp',
    f'lib/lib{NAME}.dll.a',
    f'lib/{NAME}.lib',
    f'lib/cmake/{NAME}/{NAME}Config.cmake',
    f'lib/cmake/{NAME}/{NAME}ConfigVersion.cmake',
    f'lib/pkgconfig/{NAME}.pc',
    DOC + 'LICENSE',
    DOC + 'README.md',
    DOC + 'CHANGELOG.md',
    DOC + 'docs/integration.md',
    DOC + 'docs/protocol.md',
    DOC + 'docs/debugging.md',
    DOC + 'docs/architecture.md',
    DOC + 'docs/settings-panel.md',
    DOC + 'docs/images/panel-radial.png',
    DOC + 'bindings/node/README.md',
    DOC + 'tools/settings-panel/main_window.cpp',
    DOC + 'tools/settings-service/README.md',
    DOC + 'tools/shared/settings_table.cpp',
    DOC + 'examples/README.md',
    DOC + 'examples/c-minimal/main.c',
    DOC + 'examples/cpp-raii/main.cpp',
    DOC + 'examples/two-applications/main.cpp',
]
# Symbols, which not every build type has in files of their own, and the rest of two folders.
ALLOWED_SUFFIXES = ('.debug', '.pdb')
ALLOWED_FOLDERS = (DOC + 'docs/', DOC + 'examples/', DOC + 'third-party/',
                   DOC + 'tools/settings-panel/', DOC + 'tools/shared/')
TEXT_SUFFIXES = ('.cmake', '.pc', '.h', '.hpp', '.md', '.txt')


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--package', type=pathlib.Path, required=True)
    parser.add_argument('--source', required=True)
    arguments = parser.parse_args()

    complaints = []
    files = {
        path.relative_to(arguments.package).as_posix(): path
        for path in arguments.package.rglob('*')
        if path.is_file()
    }
    complaints += [f'missing: {name}' for name in PROMISED if name not in files]
    for name, path in sorted(files.items()):
        if (name not in PROMISED and not name.endswith(ALLOWED_SUFFIXES)
                and not name.startswith(ALLOWED_FOLDERS)):
            complaints.append(f'unexpected: {name}')
        if name.endswith(TEXT_SUFFIXES) and arguments.source in path.read_text():
            complaints.append(f'knows where it was built: {name}')
        if name.endswith('.md'):
            for link in re.findall(r'\]\(([^)#:]*/include/[^)#:]*|include/[^)#:]*)', path.read_text()):
                if not (path.parent / link).exists():
                    complaints.append(f'{name}: no file {link}')
    print('\n'.join(complaints))
    return 1 if complaints else 0


sys.exit(main())
