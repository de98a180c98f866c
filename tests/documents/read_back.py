#!/usr/bin/env python3
"""What scripts/read-back does: another program, LibreOffice, reads what the command converted, and shows the known text."""
import json, os, resource, shutil, subprocess, sys, time
from collections import Counter
import xml.etree.ElementTree as ElementTree
from pathlib import Path
sys.dont_write_bytecode = True
from check_documents import KEPT, KINDS_OF_KEPT, convert, failures, tidy  # noqa: E402
from make_documents import FORMATS, make_format  # noqa: E402
from pieces import Source, escape  # noqa: E402
from hostile import docx  # noqa: E402
from readers import local, read_document, read_flat_open  # noqa: E402

# Suffix: the flat OpenDocument that LibreOffice shows it as, and how it has to be told to read it.
SHOWN_AS = {**dict.fromkeys(('docx', 'xml', 'odt', 'fodt', 'rtf'), ('fodt', None)), 'html': ('fodt:OpenDocument Text Flat XML', 'HTML (StarWriter)'),
            'txt': ('fodt', 'Text (encoded):UTF8'), 'csv': ('fods', 'Text - txt - csv (StarCalc):44,34,76,1'),
            **dict.fromkeys(('xlsx', 'ods', 'fods'), ('fods', None)), **dict.fromkeys(('pptx', 'odp', 'fodp'), ('fodp', None))}
# Of a page in UTF-8 it takes references 128 to 159 for what they say; browsers show the signs of code page 1252, as was meant.
SIGNS = {code: bytes([code]).decode('cp1252') for code in range(0x80, 0xA0) if code not in (0x81, 0x8D, 0x8F, 0x90, 0x9D)}


def show(paths, target, how, folder):
    command = ['soffice', f'-env:UserInstallation=file://{folder.resolve()}/profile', '--headless', *([f'--infilter={how}'] if how else []),
               '--convert-to', target, '--outdir', folder, *paths]
    try:
        subprocess.run(command, capture_output=True, timeout=30 + 2 * len(paths))
    except subprocess.TimeoutExpired:
        pass


def paragraphs_of(path, flat):
    """As the readers have them; of a CSV file the rows."""
    if path.suffix != '.csv':
        return read_flat_open(flat)['document']
    rows = ElementTree.fromstring(flat).iter('{urn:oasis:names:tc:opendocument:xmlns:table:1.0}table-row')
    return [','.join(''.join(cell.itertext()).strip('\n ') for cell in row if local(cell) == 'table-cell').rstrip(',') for row in rows]


def look(paths, folder):
    """{document: the paragraphs that LibreOffice shows of it}; of one that it can't read, none."""
    folder.mkdir(parents=True, exist_ok=True)
    shown = {}
    for suffix in dict.fromkeys(path.suffix for path in paths):
        target, how = SHOWN_AS[suffix[1:]]
        some = [path for path in paths if path.suffix == suffix]
        show(some, target, how, folder)
        for path in some:
            made = folder / f'{path.stem}.{target.split(":")[0]}'
            if not made.exists():  # one that ends LibreOffice takes those behind it along
                show([path], target, how, folder)
            if made.exists():
                shown[path] = {tidy(text).translate(SIGNS) for text in paragraphs_of(path, made.read_bytes())} - {''}
                made.unlink()
    return shown


def check_pairs(pairs, folder, counts):
    """pairs: (source, its texts, new document, what they became). What LibreOffice doesn't show of a source as it stands there,
    it can't show of the new one: labels of lists, codes of headers, what it calculates anew. All else must be shown."""
    before, after = look([pair[0] for pair in pairs], folder / 'before'), look([pair[2] for pair in pairs], folder / 'after')
    for source, stored, path, known in pairs:
        if source not in before:
            counts['documents that it does not read'] += 1
            continue
        counts['documents'] += 1
        if path not in after:
            failures.append(path)
            print(f'FAILED {path.name}: LibreOffice read it before, and does not now')
            continue
        for part in stored:
            for old, new in zip(stored[part], known[part]):
                if not new or not tidy(old) or tidy(old) not in before[source]:
                    counts['paragraphs that it does not show'] += 1
                    continue
                counts['paragraphs'] += 1
                if tidy(new) not in after[path]:
                    failures.append(path)
                    print(f'FAILED {path.name}: {part}', f'wanted {tidy(new)!r}', *(f'shown  {other!r}' for other in after[path] if other[:8] == tidy(new)[:8]), sep='\n    ')
    return after


def check(orvel, folder, kinds, keep):
    for kind in kinds:
        counts, pairs, made = Counter(), [], make_format(folder / 'in', kind)
        for font in dict.fromkeys(made.values()):
            sources = {path.name: path for path in made if made[path] == font}
            for new in convert(orvel, list(sources.values()), folder / 'out' / kind, font):
                texts = [json.loads(sources[new.name].with_suffix(f'.{which}.json').read_text(encoding='utf8')) for which in ('stored', 'known')]
                pairs.append((sources[new.name], texts[0], new, texts[1]))
        check_pairs(pairs, folder, counts)
        print(f'{kind}:', ', '.join(f'{count} {what}' for what, count in counts.items()))
    counts, pairs = Counter(), []
    kept = [path.with_suffix('').with_suffix('') for path in sorted(KEPT.glob('*.known.json'))]
    kept = [path for path in kept if KINDS_OF_KEPT.get(path.suffix, path.suffix[1:]) in kinds]
    for new in convert(orvel, kept, folder / 'out' / 'kept') if kept else ():
        known = json.loads((KEPT / (new.name + '.known.json')).read_text(encoding='utf8'))
        stored = {part: [text for text in map(tidy, texts) if text] for part, texts in read_document(KEPT / new.name).items()}
        pairs.append((KEPT / new.name, stored, new, known))
    shown = check_pairs(pairs, folder, counts)
    print('kept:', ', '.join(f'{count} {what}' for what, count in counts.items()))
    if keep:  # of those texts alone that an independent reader finds too
        result = {path.name: sorted(text for text in texts if not text.isascii() and any(text in map(tidy, some) for some in read_document(path).values()))
                  for path, texts in shown.items()}
        (KEPT / 'read-back.json').write_text(json.dumps(result, ensure_ascii=False, indent=1) + '\n', encoding='utf8')


def timed(command):
    before, start = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
    subprocess.run(command, check=True, capture_output=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return time.monotonic() - start, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def speed(orvel, folder, megabytes):
    source, body, size = Source('speed'), [], 0
    while size < megabytes * 1000000:
        font = source.font()
        runs = ''.join(f'<w:r><w:rPr><w:rFonts w:ascii="{font}" w:hAnsi="{font}"/></w:rPr><w:t xml:space="preserve">{escape(source.phrase(font)[0])} </w:t></w:r>' for _ in range(6))
        body.append(f'<w:p>{runs}</w:p>')
        size += len(body[-1].encode('utf8'))
    path = folder / 'speed.docx'
    path.write_bytes(docx(''.join(body)))
    shutil.rmtree(folder / 'office', ignore_errors=True)
    office = ['soffice', f'-env:UserInstallation=file://{folder.resolve()}/profile', '--headless', '--convert-to', 'docx', '--outdir', folder / 'office']
    (folder / 'empty.docx').write_bytes(docx('<w:p/>'))
    subprocess.run([*office, folder / 'empty.docx'], capture_output=True)  # makes its profile
    start = min(timed([*office, folder / 'empty.docx'])[0] for _ in range(3))
    theirs = min(timed([*office, path])[0] for _ in range(3)) - start
    ours = min(timed([orvel, 'convert', path, folder / 'new.docx'])[0] for _ in range(3))
    print(f'document.xml of {size / 1e6:.1f} MB: LibreOffice reads and writes it in {theirs:.2f} s (its start of {start:.2f} s not counted), '
          f'orvel converts it in {ours:.2f} s: {theirs / ours:.0f} times')


def main():
    options = [word for word in sys.argv[1:] if word.startswith('--')]
    words = [word for word in sys.argv[1:] if word not in options]
    orvel, folder = Path(words[0] if words else 'build/native/orvel').resolve(), Path(words[1] if len(words) > 1 else 'build/read-back')
    os.environ['XDG_DATA_HOME'] = str((folder / 'data').resolve())
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    if '--speed' in options:
        return speed(orvel, folder, float(words[2]) if len(words) > 2 else 20)
    kinds = words[2:] or list(FORMATS)
    check(orvel, folder, [kind for kind in kinds if kind != 'flat'], '--keep' in options)  # LibreOffice doesn't read flat OPC
    print(f'{len(failures)} failures')
    return 1 if failures else 0


if __name__ == '__main__':
    sys.exit(main())
