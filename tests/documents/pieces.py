"""What documents are put together from: pieces of markup that know the text they hold, words in the code of a font, and
packages as different programs write them."""
import io, random, re, zipfile, zlib
from legacy_fonts import FONTS, ROOT, character_of, put_in_font, store  # noqa: F401

CORPUS = [' '.join(line.split()) for name in ('udhr', 'cldr_annotations', 'web_phrases')
          for line in (ROOT / f'tests/corpus/{name}.txt').read_text(encoding='utf8').splitlines() if line.strip()]
FONT_OF_TODAY = 'Arial'
UDHR = CORPUS[:85]


def deleted(text):
    """How deleted text and the code of a field stand in the known text: they are there, and nobody sees them."""
    return f'⟦deleted:{text}⟧' if text else ''


def field(text):
    return f'⟦field:{text}⟧' if text else ''


def merged(text):
    """Marked pieces of one kind side by side are one."""
    last = None
    while text != last:
        last, text = text, re.sub(r'(⟦([a-z]+):[^⟧]*)⟧⟦\2:', r'\1', text)
    return text


def visible(text):
    return re.sub('⟦[a-z]+:[^⟧]*⟧', '', text)


class Piece:
    """Markup; the text as a document holds it and as it must come out; paragraphs that stand inside, in order."""

    def __init__(self, markup='', stored='', known=None, inner=()):
        self.markup, self.stored, self.inner = markup, stored, list(inner)
        self.known = stored if known is None else known

    def __add__(self, other):
        return Piece(self.markup + other.markup, self.stored + other.stored, self.known + other.known, self.inner + other.inner)

    def within(self, before, after):
        return Piece(before + self.markup + after, self.stored, self.known, self.inner)

    def as_paragraph(self, before, after):
        """A paragraph comes in front of those that begin inside it."""
        return Piece(before + self.markup + after, inner=[(self.stored, self.known)] + self.inner)

    def marked(self, mark):
        return Piece(self.markup, mark(self.stored), mark(self.known), self.inner)


def joined(pieces):
    whole = Piece()
    for piece in pieces:
        whole += piece
    return whole


class Source:
    """All chance of a document: fonts in turn, so that each is used, and phrases in them."""

    def __init__(self, seed, fonts=()):
        self.random = random.Random(seed)
        self.fonts = list(fonts) or list(FONTS)
        self.random.shuffle(self.fonts)
        self.next = 0

    def choose(self, *choices):
        return self.random.choice(choices)

    def often(self, share=0.5):
        return self.random.random() < share

    def font(self):
        self.next += 1
        return self.fonts[self.next % len(self.fonts)]

    def spelled(self, font):
        """Fonts are found whatever their capitals."""
        return self.choose(font.upper(), font.lower()) if font in FONTS and self.often(0.05) else font

    def words(self):
        line = self.random.choice(UDHR if self.often(0.7) else CORPUS)
        words = line.split(' ')
        at = self.random.randrange(len(words))
        return ' '.join(words[at:at + self.random.randint(1, 4)])[:120].strip()

    def phrase(self, font, avoid=''):
        """(stored, known) of some words; a font that isn't legacy has Latin text."""
        if font not in FONTS:
            text = self.choose('Vientiane', 'Résumé & more <1948>', 'Saysettha Lao', 'Ünïcode “text” – 5 €', 'a-b', 'ລາວ Lao')
            return text, text
        text = self.words()
        if self.often(0.3):
            text += self.choose(' 1-2', ' ໑໒໓', ' 7 & 5', ' (“ກ”)', '\xa0ໆ', ' ກ\u200bຂ', ' "ກ"', ' ຂໍ້ 5$', ' ຫຼວງ', ' ນ້ຳ', ' ເປັ່ນ', ' a<b>c')
        stored, known = (re.sub(' +', ' ', s) for s in store(text, font, avoid))
        return (stored.strip(' '), known.strip(' ')) if stored.strip(' ') else (put_in_font('ກ', font), 'ກ')


def escape(text, source=None, attribute=False):
    """Text as XML; with a source of chance in the different ways that XML has for the same text."""
    out = []
    for character in text:
        number = ord(character)
        if character in '&<>':
            name = {'&': '&amp;', '<': '&lt;', '>': '&gt;'}[character]
            out.append(f'&#{number};' if source and source.often(0.2) else name)
        elif attribute and character in '"\'':
            out.append('&quot;' if character == '"' else '&apos;')
        elif source and number > 0x7F and source.often(0.05):
            out.append(source.choose(f'&#{number};', f'&#x{number:X};', f'&#x{number:04x};'))
        else:
            out.append(character)
    return ''.join(out)


class OneWay(io.RawIOBase):
    """A pipe: who writes a package into one puts sizes behind the data."""

    def __init__(self):
        self.data = b''

    def writable(self):
        return True

    def write(self, data):
        self.data += bytes(data)
        return len(data)


def package(parts, source, first_stored=None, packer=None):
    """A zip of the parts, {name: text or bytes}, as one of several programs packs."""
    packer = packer or source.choose('plain', 'times', 'pipe', 'mixed')
    stream = OneWay() if packer == 'pipe' else io.BytesIO()
    with zipfile.ZipFile(stream, 'w') as archive:
        for i, (name, content) in enumerate(parts.items()):
            info = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0) if packer != 'times' else (2009, 3, 1 + i % 28, 12, 30, 2 * (i % 30)))
            info.compress_type = zipfile.ZIP_DEFLATED
            if name == first_stored or (packer == 'mixed' and source.often(0.4)):
                info.compress_type = zipfile.ZIP_STORED
            info.external_attr = 0o600 << 16 if packer == 'times' else 0
            level = source.choose(1, 6, 9)
            archive.writestr(info, content.encode('utf8') if isinstance(content, str) else content, compresslevel=level)
    return stream.data if packer == 'pipe' else stream.getvalue()


def picture():
    def chunk(kind, data):
        return len(data).to_bytes(4, 'big') + kind + data + zlib.crc32(kind + data).to_bytes(4, 'big')
    return (b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', bytes([0, 0, 0, 1, 0, 0, 0, 1, 8, 0, 0, 0, 0])) +
            chunk(b'IDAT', zlib.compress(b'\0\x80')) + chunk(b'IEND', b''))


def known_of(parts, which):
    """{part: [text of each paragraph]} of pieces; which: 0 as stored, 1 as it must come out."""
    return {name: [merged(texts[which]) for texts in piece.inner if texts[which]] for name, piece in parts.items() if piece.inner}
