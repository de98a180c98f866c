"""Reads documents back, knowing nothing of how they were made or converted: {part: [text of each paragraph]}, in the order in
which paragraphs begin. Deleted text and codes of fields are marked as pieces.py has it; empty paragraphs are left out."""
import csv, io, re, zipfile
import xml.etree.ElementTree as ElementTree
from html.parser import HTMLParser
from pieces import deleted, field, merged

TEXT_OF = {'tab': '\t', 'br': '\n', 'cr': '\n', 'noBreakHyphen': '\u2011', 'softHyphen': '\xad', 'line-break': '\n'}


def local(element):
    return element.tag.rpartition('}')[2]


def value(element, name):
    return next((v for k, v in element.attrib.items() if k.rpartition('}')[2] == name), '')


class Paragraphs:
    """Texts in the order of their begin, though one may go on behind those inside it."""

    def __init__(self):
        self.texts = []

    def begin(self):
        self.texts.append([])
        return self.texts[-1]

    def finished(self):
        return [merged(''.join(text)) for text in self.texts if ''.join(text)]


def walk_office(element, paragraphs, text, inside):
    """Office Open XML and WordprocessingML 2003: all text stands in elements of its own."""
    for child in element:
        name = local(child)
        if name in ('p', 'comment') and (name == 'p' or child.find('.//{*}p') is None):
            walk_office(child, paragraphs, paragraphs.begin(), name)
        elif name == 'lvlText':
            paragraphs.begin().append(value(child, 'val'))
        elif name in ('t', 'instrText', 'delText'):
            content = child.text or ''
            text.append({'t': str, 'instrText': field, 'delText': deleted}[name](content))
        elif name == 'sym':
            text.append(chr(int(value(child, 'char'), 16)))
        elif name in TEXT_OF and inside in ('r', 'p'):
            text.append(TEXT_OF[name])
        elif name == 'rPh':  # how a cell's text is read aloud
            continue
        else:
            if name == 'fldSimple':
                text.append(field(value(child, 'instr')))
            walk_office(child, paragraphs, text, name)


def read_office_part(root):
    paragraphs = Paragraphs()
    walk_office(root, paragraphs, [], '')
    return paragraphs.finished()


def read_flat_office(data):
    root = ElementTree.fromstring(data)
    if local(root) != 'package':
        return {'document': read_office_part(root)}
    parts = {value(part, 'name').lstrip('/'): part.find('{*}xmlData') for part in root}
    return {name: read_office_part(part) for name, part in parts.items() if part is not None}


def parts_of(data):
    with zipfile.ZipFile(io.BytesIO(data)) as archive:
        return {name: archive.read(name) for name in archive.namelist()}


def read_packed_office(data):
    parts = parts_of(data)
    return {name: read_office_part(ElementTree.fromstring(parts[name])) for name in parts
            if name.endswith('.xml') and re.match(r'(word|ppt)/', name) and not re.search('ppt/(slideLayouts|slideMasters)/', name)}


def read_spreadsheet(data):
    parts = {name: ElementTree.fromstring(content) for name, content in parts_of(data).items() if name.endswith('.xml')}
    shared = [cell_text(item) for item in parts.get('xl/sharedStrings.xml', ())]
    result = {}
    for name, root in parts.items():
        if name.startswith('xl/worksheets/'):
            cells = [cell_of(cell, shared) for cell in root.iter() if local(cell) == 'c']
            heads = [e.text for e in root.iter() if re.match('(odd|even|first)(Header|Footer)$', local(e)) and e.text]
            result[name] = [text for text in cells + heads if text]
        elif re.match('xl/(comments|drawings)', name):
            result[name] = read_office_part(root)
    return result


def cell_text(item):
    phonetic = {t for rph in item.iter() if local(rph) == 'rPh' for t in rph.iter()}
    return ''.join(t.text or '' for t in item.iter() if local(t) == 't' and t not in phonetic)


def cell_of(cell, shared):
    for child in cell:
        if local(child) == 'is':
            return cell_text(child)
        if local(child) == 'v':
            return shared[int(child.text)] if cell.get('t') == 's' else child.text
    return ''


def walk_open(element, paragraphs, text):
    """OpenDocument: text stands between elements; of blanks in a row the first counts."""
    for child in element:
        name = local(child)
        if name in ('p', 'h'):
            inner = paragraphs.begin()
            inner.append(child.text or '')
            walk_open(child, paragraphs, inner)
        elif name in ('creator', 'date', 'date-string', 'note-citation', 'binary-data'):
            pass
        elif name == 's':
            text.append('\ue000' * int(value(child, 'c') or 1))
        elif name in TEXT_OF:
            text.append('\ue001' if name == 'tab' else '\ue002')
        else:
            own = None if name in ('note', 'annotation', 'frame') else text
            if own is not None:
                own.append(child.text or '')
            walk_open(child, paragraphs, own)
        if text is not None:
            text.append(child.tail or '')


def read_open_part(root):
    paragraphs = Paragraphs()
    walk_open(root, paragraphs, None)
    texts = [re.sub('[ \t\r\n]+', ' ', ''.join(text)).strip(' ') for text in paragraphs.texts]
    return [text.translate({0xE000: ' ', 0xE001: '\t', 0xE002: '\n'}) for text in texts if text]


def read_packed_open(data):
    parts = parts_of(data)
    return {name: read_open_part(ElementTree.fromstring(parts[name])) for name in ('content.xml', 'styles.xml') if name in parts}


def read_flat_open(data):
    return {'document': read_open_part(ElementTree.fromstring(data))}


BLOCKS = 'html head body title p div h1 h2 h3 ul ol li table tr td th tbody thead center blockquote pre hr dl dt dd address'.split()


class PageReader(HTMLParser):
    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.texts, self.skipped = [''], None

    def handle_starttag(self, tag, attributes):
        if tag in ('script', 'style'):
            self.skipped = tag
        if tag in BLOCKS:
            self.texts.append('')
        if tag == 'br':
            self.texts[-1] += '\ue002'

    def handle_endtag(self, tag):
        self.skipped = None if tag == self.skipped else self.skipped
        if tag in BLOCKS:
            self.texts.append('')

    def handle_data(self, data):
        if not self.skipped:
            self.texts[-1] += data


def read_page(data):
    charset = re.search(rb'charset=["\']?([\w-]+)', data[:2048], re.I)
    charset = charset[1].decode().lower() if charset else 'utf-8' if data.startswith(b'\xef\xbb\xbf') else 'windows-1252'
    if charset == 'utf-8':
        text = data.decode('utf8')
    else:
        text = ''.join(chr(b) if 0x80 <= b < 0xA0 and b in (0x81, 0x8D, 0x8F, 0x90, 0x9D) else bytes([b]).decode('cp1252') for b in data)
    reader = PageReader()
    reader.feed(text)
    reader.close()
    texts = [re.sub('[ \t\r\n\f]+', ' ', text).strip(' ').replace('\ue002', '\n') for text in reader.texts]
    return {'document': [re.sub(' *\n *', '\n', text) for text in texts if text.strip()]}


CHARACTERS = {'lquote': '‘', 'rquote': '’', 'ldblquote': '“', 'rdblquote': '”', 'endash': '–', 'emdash': '—', 'bullet': '•', 'tab': '\t',
              'line': '\n', '~': '\xa0', '-': '\xad', '_': '\u2011'}
APART = 'header footer headerl headerr headerf footerl footerr footerf footnote annotation shptxt'.split()
UNSEEN = ('fonttbl colortbl stylesheet info pict generator atnid atnauthor atrfstart atrfend sp listtable listoverridetable revtbl rsidtbl themedata '
          'bkmkstart bkmkend panose falt pntext listtext xmlnstbl pgdsctbl latentstyles datastore atndate nonshppict shprslt').split()
TOKEN = re.compile(rb"\\([a-zA-Z]+)(-?\d+)? ?|\\'([0-9a-fA-F]{2})|\\(.)|([{}])|([^\\{}]+)", re.S)


class RichTextReader:
    def __init__(self):
        self.main, self.inner = Paragraphs(), Paragraphs()
        self.state = {'uc': 1, 'list': self.main, 'seen': True, 'field': False, 'deleted': False}
        self.open = {id(self.main): None}
        self.stack, self.pending, self.star = [], 0, False

    def put(self, text):
        state = self.state
        if self.pending and text:
            self.pending -= 1
            return
        if not state['seen'] or not text:
            return
        key = state['key'] if 'key' in state else id(self.main)
        if self.open.get(key) is None:
            self.open[key] = state['list'].begin()
        self.open[key].append(field(text) if state['field'] else deleted(text) if state['deleted'] else text)

    def word(self, name, number):
        state = self.state
        if self.star and name not in APART + ['fldinst', 'shpinst', 'shptxt', 'nesttableprops', 'shppict']:
            state['seen'] = False
        self.star = False
        if name == 'u':
            self.put(chr(number % 0x10000))
            self.pending = state['uc']
        elif name == 'uc':
            state['uc'] = number
        elif name in ('par', 'cell', 'sect', 'row', 'nestcell'):
            self.open[state.get('key', id(self.main))] = None
        elif name in UNSEEN:
            state['seen'] = False
        elif name in APART:
            state.update(list=self.inner, key=len(self.inner.texts) + 1, seen=True)
            self.open[state['key']] = self.inner.begin()
        elif name == 'fldinst':
            state['field'] = True
        elif name in ('deleted', 'plain'):
            state['deleted'] = name == 'deleted' and number != 0
        elif name in CHARACTERS:
            self.put(CHARACTERS[name])

    def read(self, data):
        for word, number, code, sign, brace, text in TOKEN.findall(data):
            if brace == b'{':
                self.stack.append(dict(self.state))
            elif brace == b'}':
                self.state, self.pending = self.stack.pop(), 0
            elif word:
                self.word(word.decode(), int(number) if number else None)
            elif code:
                byte = bytes([int(code, 16)])
                self.put(byte.decode('cp1252') if byte not in b'\x81\x8d\x8f\x90\x9d' else chr(byte[0]))
            elif sign == b'*':
                self.star = True
            elif sign:
                self.put(CHARACTERS.get(sign.decode(), sign.decode()))
            else:
                for character in text.decode('ascii').replace('\r', '').replace('\n', ''):
                    self.put(character)


def read_rich_text(data):
    reader = RichTextReader()
    reader.read(data)
    return {'main': reader.main.finished(), 'inner': reader.inner.finished()}


def read_lines(data):
    return {'document': [line for line in re.split('\r?\n', data.decode('utf8')) if line]}


def read_rows(data):
    """A field that has a comma or a quote in it stands in quotes."""
    return {'document': [','.join(row) for row in csv.reader(io.StringIO(data.decode('utf8'))) if row]}


READERS = {'docx': read_packed_office, 'pptx': read_packed_office, 'xlsx': read_spreadsheet, 'xml': read_flat_office, 'html': read_page,
           'rtf': read_rich_text, 'txt': read_lines, 'csv': read_rows, **dict.fromkeys(('odt', 'ods', 'odp'), read_packed_open),
           **dict.fromkeys(('fodt', 'fods', 'fodp'), read_flat_open)}


def read_document(path):
    """Parts without text are left out."""
    return {name: texts for name, texts in READERS[path.suffix[1:]](path.read_bytes()).items() if texts}
