#!/usr/bin/env python3
"""check_documents.py ORVEL FOLDER [FORMAT…]: makes documents of known text, converts them, reads them with readers of its own
and compares paragraph by paragraph; then what else a conversion promises. Without formats: all that the command knows."""
import io, json, os, re, shutil, struct, subprocess, sys, zipfile
from collections import Counter
import xml.etree.ElementTree as ElementTree
from pathlib import Path
sys.dont_write_bytecode = True
from legacy_fonts import FONTS  # noqa: E402
from hostile import check_hostile  # noqa: E402
from make_documents import FORMATS, make_format, make_of_today  # noqa: E402
from pieces import visible  # noqa: E402
from readers import local, read_document, value  # noqa: E402

SMALL = {name.casefold(): unicode for name, (_, unicode) in FONTS.items()}
failures = []


def fail(path, *lines):
    failures.append(path)
    print(f'FAILED {path.name}: ' + '\n    '.join(map(str, lines)))


def convert(orvel, sources, folder, font=None):
    """The new documents; None for each where the command failed."""
    command = [orvel, 'convert', *(['--font', font] if font else []), '--to', folder, *sources]
    done = subprocess.run(command, capture_output=True, text=True, errors='replace')
    if done.returncode:
        fail(folder, f'exit status {done.returncode}', done.stderr.strip()[:2000])
    made = [folder / source.name for source in sources]
    for path in made:
        if not path.exists() and not done.returncode:
            fail(path, 'was not written')
    return [path for path in made if path.exists()]


def compare(path, known):
    """The texts of a new document with what must come out."""
    try:
        got = read_document(path)
    except (ElementTree.ParseError, zipfile.BadZipFile, zipfile.zlib.error, ValueError, IndexError, KeyError) as error:
        return fail(path, f'not readable: {error!r}')
    for part in known | got:
        wanted, found = known.get(part, []), got.get(part, [])
        for i in range(max(len(wanted), len(found))):
            one, other = (texts[i] if i < len(texts) else None for texts in (wanted, found))
            if one != other:
                fail(path, f'{part}, paragraph {i + 1} of {len(wanted)}', f'wanted {one!r}', f'found  {other!r}')
                break


def xml_parts(path):
    """Parts that are XML, without those that were moved about, as cells' texts are."""
    data = path.read_bytes()
    if not data.startswith(b'PK'):
        return {'': data}
    with zipfile.ZipFile(io.BytesIO(data)) as archive:
        return {name: archive.read(name) for name in archive.namelist() if name.endswith('.xml') and not name.endswith('sharedStrings.xml')}


TEXT_TAGS = {'r', 'rPr', 't', 'delText', 'sym', 'softHyphen', 'span'}
ADDED_TAGS = {'cs', 'bCs', 'iCs', 'szCs', 'b-cs', 'i-cs', 'sz-cs'}  # fonts, weight, slant and size of Lao letters
FONT_ATTRIBUTES = {'ascii', 'hAnsi', 'h-ansi', 'cs', 'eastAsia', 'fareast', 'typeface', 'font-family', 'font-family-complex'}
NAMED_FONTS = {('font', 'name'), ('font', 'val'), ('rFont', 'val'), ('name', 'val'), ('sym', 'font')}
REPLACEMENTS = set(SMALL.values())


def form_of(data):
    """The elements that a conversion doesn't touch, the names of fonts, and what says how Lao letters of a legacy font look."""
    elements, fonts, complex_fonts = [], set(), []

    def walk(element):
        name = local(element)
        if name not in TEXT_TAGS | ADDED_TAGS:
            elements.append(name)
        if name == 'rFonts' and element.attrib.keys() and any(value(element, key) in REPLACEMENTS for key in ('hAnsi', 'h-ansi')):
            complex_fonts.append((value(element, 'hAnsi') or value(element, 'h-ansi'), value(element, 'cs')))
        for key, text in element.attrib.items():
            key = key.rpartition('}')[2]
            if key in FONT_ATTRIBUTES or (name, key) in NAMED_FONTS:
                fonts.add(text.strip('\'"').casefold())
        for child in element:
            if name != 'rPr' or local(child) == 'rFonts':
                walk(child)
    walk(ElementTree.fromstring(data))
    return elements, fonts, complex_fonts


def check_form(source, path):
    """No element is lost, and each legacy font is replaced by the one that the map has, wherever it is named."""
    if path.suffix in ('.html', '.rtf', '.txt', '.csv'):
        text = path.read_bytes().decode('latin-1').casefold()
        if path.suffix == '.rtf':
            names = re.findall(r'[ }]([^{};\\]+)(?:\{\\\*\\falt[^}]*\})?;', text[text.index('\\fonttbl'):text.index('\\colortbl')])
        else:
            text = re.sub(r'<script.*?</script>|</style>.*?<!--.*?-->|/\*.*?\*/', '', text, flags=re.S)
            names = re.findall(r'[ =:"\']([a-z][a-z0-9_ ]*)[,"\';>}]', ' '.join(re.findall(r'<[^>]*>|<style.*?</style>', text, re.S)))
        for name in set(names) & set(SMALL):
            fail(path, f'the font {name} is still there')
        return
    before, after = ({part: form_of(data) for part, data in xml_parts(p).items()} for p in (source, path))
    known = {SMALL.get(name, name).casefold() for _, fonts, _ in before.values() for name in fonts}
    for part in before.keys() & after.keys():
        (elements, _, _), (new_elements, fonts, complex_fonts) = before[part], after[part]
        if elements != new_elements:
            at = next((i for i, pair in enumerate(zip(elements, new_elements)) if pair[0] != pair[1]), min(len(elements), len(new_elements)))
            fail(path, f'{part}: element {at} was {elements[at:at + 3]}, is {new_elements[at:at + 3]}')
        if fonts - known:
            fail(path, f'{part}: fonts that come from nowhere: {sorted(fonts - known)}')
        wrong = {pair for pair in complex_fonts if pair[1] not in REPLACEMENTS}
        if wrong:  # word processors show Lao letters in the second one
            fail(path, f'{part}: fonts with another font for Lao letters: {wrong}')


def entries_of(path):
    """What a package says of each of its parts, and the bytes as they are packed."""
    data, entries = path.read_bytes(), {}
    with zipfile.ZipFile(io.BytesIO(data)) as archive:
        for info in archive.infolist():
            name, extra = struct.unpack_from('<HH', data, info.header_offset + 26)
            start = info.header_offset + 30 + name + extra
            entries[info.filename] = (archive.read(info), info.date_time, info.compress_type, info.external_attr,
                                      data[start:start + info.compress_size])
    return entries


def check_package(source, path):
    """Parts that need no change are those of the source, byte for byte as they were packed."""
    if not source.read_bytes().startswith(b'PK'):
        return
    before, after = entries_of(source), entries_of(path)
    if list(before) != list(after):
        return fail(path, f'parts {list(after)}', f'wanted {list(before)}')
    for name, entry in before.items():
        same = entry[1:] == after[name][1:] if entry[0] == after[name][0] else entry[1:4] == after[name][1:4]
        if not same:
            fail(path, f'{name}: is packed otherwise', entry[1:4], after[name][1:4])


def check_same(sources, made, why):
    for source, path in zip(sources, made):
        if source.name == path.name and source.read_bytes() != path.read_bytes():
            fail(path, why)


def check_format(orvel, folder, kind):
    made = make_format(folder / 'in', kind)
    groups = {font: [path for path in made if made[path] == font] for font in dict.fromkeys(made.values())}
    for font, sources in groups.items():
        new = convert(orvel, sources, folder / 'out' / kind, font)
        for path in new:
            source = next(source for source in sources if source.name == path.name)
            compare(path, json.loads(source.with_suffix('.known.json').read_text(encoding='utf8')))
            check_form(source, path)
            check_package(source, path)
        if not font and new:  # a text has nothing that says that it's converted
            check_same(new, convert(orvel, new, folder / 'again' / kind), 'converting it again changes it')
    if kind not in ('txt', 'csv'):
        today = make_of_today(folder / 'today', kind)
        check_same(today, convert(orvel, today, folder / 'out' / 'today'), 'has no legacy font, and is changed')
    return len(made)


KEPT = Path(__file__).resolve().parent / 'libreoffice'
KINDS_OF_KEPT = {'.xml': 'word2003'}


def check_kept(orvel, folder, kinds):
    """Documents that another program wrote, and what it showed of the new ones when they were looked at."""
    shown = json.loads((KEPT / 'read-back.json').read_text(encoding='utf8')) if (KEPT / 'read-back.json').exists() else {}
    kept = [path.with_suffix('').with_suffix('') for path in sorted(KEPT.glob('*.known.json'))]
    kept = [path for path in kept if KINDS_OF_KEPT.get(path.suffix, path.suffix[1:]) in kinds]
    for path in convert(orvel, kept, folder / 'out' / 'kept') if kept else ():
        source = KEPT / path.name
        known = json.loads(source.with_name(source.name + '.known.json').read_text(encoding='utf8'))
        got = {part: list(filter(None, map(tidy, texts))) for part, texts in read_document(path).items()}
        for part, texts in known.items():
            found = got.get(part, [])
            wrong = next((i for i, (one, other) in enumerate(zip(texts, found)) if one not in (None, other)), None)
            if wrong is not None or len(texts) != len(found):
                at = min(len(texts), len(found)) - 1 if wrong is None else wrong
                fail(path, f'{part}, paragraph {at + 1} of {len(texts)}, now {len(found)}', f'wanted {texts[at]!r}', f'found  {found[at]!r}')
        check_form(source, path)
        check_package(source, path)
        unseen = Counter(shown.get(path.name, ())) - Counter(text for texts in got.values() for text in texts)
        if unseen:
            fail(path, f'LibreOffice showed otherwise: {list(unseen)[0]!r}')
    return len(kept)


def check_refused(orvel, folder):
    """A kind that nothing here reads: who has it is told what to do, and the old destination stays."""
    destination = folder / 'refused.docx'
    destination.write_text('old')
    done = subprocess.run([orvel, 'convert', KEPT / 'letter.doc', destination], capture_output=True, text=True, errors='replace')
    if done.returncode != 1 or 'soffice' not in done.stderr or destination.read_text() != 'old':
        fail(KEPT / 'letter.doc', f'exit status {done.returncode}', done.stderr)
    return 1


def tidy(text):
    """A text as it stands in what is known of another program's documents."""
    return ' '.join(visible(text).split())


def main():
    orvel, folder = Path(sys.argv[1]).resolve(), Path(sys.argv[2])
    os.environ['XDG_DATA_HOME'] = str(folder / 'data')  # no font map of the user's own
    shutil.rmtree(folder, ignore_errors=True)
    kinds = sys.argv[3:] or list(FORMATS)
    count = sum(check_format(orvel, folder, kind) for kind in kinds) + check_kept(orvel, folder, kinds) + check_refused(orvel, folder)
    hostile = check_hostile(orvel, folder / 'hostile', set(FORMATS) - set(kinds), fail)
    print(f'{count} documents and {hostile} hostile ones, {len(failures)} failures')
    return 1 if failures else 0


if __name__ == '__main__':
    sys.exit(main())
