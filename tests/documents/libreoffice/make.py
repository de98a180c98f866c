#!/usr/bin/env python3
"""make.py FOLDER: lets LibreOffice write the documents of this folder anew, from sources in FOLDER. README.md tells the rest."""
import json, re, subprocess, sys
from pathlib import Path
HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
from open_document import CONTENTS, OpenDocument  # noqa: E402
from pieces import Source, known_of, visible  # noqa: E402
from readers import read_document  # noqa: E402

SEEDS = {'letter': 8, 'report': 1, 'table': 1, 'talk': 1}  # with which it changes no text
# What LibreOffice loses in a format, and of a cell's text in all.
LOST = {'letter': ('changed', 'annotation', 'tabs', 'link', 'cut', 'nested'), 'report': ('changed', 'annotation'), 'table': ('nested', 'cut', 'tabs', 'symbols'), 'talk': ()}
KINDS = {'letter': ('text', 'fodt', ('docx', 'odt', 'rtf', 'html', 'doc', 'xml:MS Word 2003 XML')),
         'report': ('text', 'fodt', ('docx', 'odt', 'rtf')),
         'table': ('spreadsheet', 'fods', ('xlsx', 'ods')), 'talk': ('presentation', 'fodp', ('pptx', 'odp'))}


def main():
    folder = Path(sys.argv[1])
    for name, (kind, suffix, targets) in KINDS.items():
        if sys.argv[2:] and name not in sys.argv[2:]:
            continue
        source = Source(f'LibreOffice {SEEDS[name]} {name}')
        document = OpenDocument(source, kind, True, [c for c in CONTENTS if c not in LOST[name]])
        document.is_plain = True  # it sets fonts of its own over character styles
        data, whole = document.write()
        path = folder / f'{name}.{suffix}'
        path.write_bytes(data)
        stored, known = (known_of(whole, which)['document'] for which in (0, 1))
        rows = list(zip(stored, known))  # paragraphs of a note are one in some formats
        rows += [(a + c, b + d) for apart in range(1, 7) for (a, b), (c, d) in zip(rows, rows[apart:])]
        known = {' '.join(a.split()): b for a, b in rows}
        for target in targets:
            subprocess.run(['soffice', '--headless', '--convert-to', target, '--outdir', HERE, path], check=True, capture_output=True)
            made = HERE / f'{name}.{target.split(":")[0]}'
            if not made.exists():
                print(f'{made.name}: not written')
            elif made.suffix != '.doc':
                write_known(made, known)


def write_known(path, known):
    """The known text in the parts and the order that LibreOffice chose; only what has no legacy letters may be its own."""
    result = {}
    # In pages it leaves out the font of the first text of a footer: nothing says then what code that is in.
    fontless = tuple(re.findall('<p style[^>]*>([\uf020-\uf0ff]+)', path.read_text(encoding='utf8'))) if path.suffix == '.html' else ()
    for part, texts in read_document(path).items():
        for text in map(visible, texts):
            text = ' '.join(text.split())
            number = re.match('([0-9]+|[ivx]+)?[.:]?', text)[0] if path.suffix == '.html' and text not in known else ''  # of a note
            text = text[len(number):]
            is_own = text.isascii() or re.match('[\uf000-\uf0ff]$', text)  # a number, a bullet
            if text not in known and not is_own:
                print(f'{path.name}, {part}: not as written: {text!r}')
            text = number + ' '.join(known[text].split()) if text in known and not text.startswith(fontless) else None
            result.setdefault(part, []).append(text)
    path.with_name(path.name + '.known.json').write_text(json.dumps(result, ensure_ascii=False, indent=1), encoding='utf8')


main()
