"""What the documents name is there: linked files, scripts, functions, callbacks, presets."""

import json
import pathlib
import re
import sys

source = pathlib.Path(sys.argv[1])
FOLDERS = ('', 'docs', 'docs/decisions', 'examples', 'bindings/node', 'tools/settings-service')


def main():
    header = (source / 'include/KorvuTabletSettingsAPI.h').read_text()
    known = set(re.findall(r'\b\w+\b', header))
    presets = json.loads((source / 'CMakePresets.json').read_text())['configurePresets']
    preset_names = {preset['name'] for preset in presets}
    complaints = []

    for page in (page for folder in FOLDERS for page in sorted((source / folder).glob('*.md'))):
        text = page.read_text()
        prose = re.sub(r'^```.*?^```$', '', text, flags=re.MULTILINE | re.DOTALL)

        def complain(what, page=page):
            complaints.append(f'{page.relative_to(source)}: {what}')

        for link in re.findall(r'\]\(([^)#]+)[^)]*\)', prose):
            if '://' not in link and not (page.parent / link).exists():
                complain(f'no file {link}')
        for script in re.findall(r'\bscripts/[\w-]+\.sh\b', text):
            if not (source / script).exists():
                complain(f'no {script}')
        for name in re.findall(r'\bKorvuISD_\w+\b|\bOn[A-Z]\w+\b(?=`)|\bKORVUISD_\w+\b', text):
            if name not in known and not name.endswith('_'):
                complain(f'the header has no {name}')
        for preset in re.findall(r'\bmingw-(?:release|debug|clang)\b|--preset ([\w-]+)', text):
            if preset and preset not in preset_names:
                complain(f'no preset {preset}')

    print('\n'.join(complaints))
    return 1 if complaints else 0


sys.exit(main())
