"""No folder of src/ includes a file of one that is not below it, as docs/architecture.md says."""

import pathlib
import re
import sys

source = pathlib.Path(sys.argv[1])
BELOW = {
    'platform': [],
    'settings': ['platform'],
    'transport': ['platform'],
    'core': ['platform', 'settings', 'transport'],
    'commands': ['platform', 'settings', 'transport', 'core'],
}


def main():
    folders = {path.name for path in (source / 'src').iterdir() if path.is_dir()}
    complaints = [f'src/{folder}: nobody has said what it may include' for folder in folders - set(BELOW)]
    for folder, below in BELOW.items():
        files = [path for path in (source / 'src' / folder).rglob('*') if path.suffix in ('.h', '.cpp')]
        if not files:
            complaints.append(f'src/{folder} has no files')
        for path in files:
            for included in re.findall(r'^\s*#\s*include "([\w.]+)/', path.read_text(), re.MULTILINE):
                if included not in [folder, *below]:
                    complaints.append(f'{path.relative_to(source)} includes a file of {included}/')
    print('\n'.join(complaints))
    return 1 if complaints else 0


sys.exit(main())
