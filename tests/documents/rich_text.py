"""RTF as word processors write it: a table of fonts, switches in nested groups, bytes and \\u with what stands in for it."""
from legacy_fonts import FONTS, byte_of, shown
from pieces import Piece, deleted, field, joined, picture

WORDS = {'‘': '\\lquote ', '’': '\\rquote ', '“': '\\ldblquote ', '”': '\\rdblquote ', '–': '\\endash ', '—': '\\emdash ', '•': '\\bullet ',
         '\xa0': '\\~', '\xad': '\\-'}
CONTENTS = ('plain', 'group', 'group', 'switched', 'latin', 'nested', 'cut', 'unicode', 'symbols', 'tabs', 'field', 'note', 'comment', 'box', 'removed')


class RichText:
    def __init__(self, source, writer):
        self.source, self.writer = source, writer
        self.fonts, self.charsets, self.inner = ['Times New Roman', 'Arial'], {}, Piece()
        self.uc = source.choose(1, 1, 1, 2, 0)
        self.first = source.choose(0, source.choose(3, 40))  # numbers of fonts need not begin at 0
        if source.often(0.4):
            self.fonts[0] = source.font()  # the font of the document, as \plain has it

    def number(self, font):
        if font not in self.fonts:
            self.fonts.append(font)
        return self.first + self.fonts.index(font)

    def switch(self, font):
        """The words that put text into a font."""
        n = self.number(font)
        other = self.number(self.source.choose('Arial', self.source.font()))
        if self.writer == 'word':
            return self.source.choose(f'\\rtlch\\fcs1 \\af{other} \\ltrch\\fcs0 \\f{n}\\insrsid{self.source.random.randrange(99999)} ',
                                      f'\\loch\\af{n}\\hich\\af{n}\\dbch\\af{other}\\f{n} ', f'\\hich\\af{n}\\dbch\\af{other}\\loch\\f{n} ', f'\\f{n}\\fs24 ')
        return self.source.choose(f'\\rtlch\\af{other} \\ltrch\\loch\\f{n} ', f'\\loch\\f{n}\\hich\\af{n}\\dbch\\af{other} ', f'\\f{n} ')

    def text(self, stored, known):
        out = ''
        for i, c in enumerate(stored):
            byte = byte_of(c)
            if c in '\\{}':
                out += '\\' + c
            elif byte < 0x80:
                out += c
            elif c in WORDS and self.source.often(0.4 if c not in '\xa0\xad' else 0.8):
                out += WORDS[c]
            elif byte > 0xFF or self.source.often(0.1 if self.writer == 'word' else 0.03):
                number = ord(c) - 0x10000 if ord(c) > 0x7FFF else ord(c)
                instead = '?' if byte > 0xFF else f"\\'{byte:02x}"
                out += f'\\u{number}' + (instead * self.uc or ' ')
            else:
                out += f"\\'{byte:{self.source.choose('02x', '02X') if i % 7 == 0 else '02x'}}"
            if self.source.often(0.02) and c not in ' -' and byte > 0x7F:
                out += '\r\n'
        return Piece(out, stored, known)

    def words(self, font):
        return self.text(*self.source.phrase(font))

    def plain(self, base, depth):
        return self.words(base)

    def group(self, base, depth):
        font = self.source.font()
        return self.words(font).within('{' + self.switch(font), '}')

    def switched(self, base, depth):
        """A font that holds from here on, not only in a group."""
        font = self.source.font()
        return self.words(font).within(f'\\f{self.number(font)} ', f'\\f{self.number(base)} ')

    def latin(self, base, depth):
        return self.words('Arial').within('{' + self.switch('Arial'), '}')

    def nested(self, base, depth):
        font = self.source.font()
        return (self.words(font) + self.latin(base, depth) + self.words(font).within('{\\b ', '}') + self.words(font)).within('{' + self.switch(font), '}')

    def cut(self, base, depth):
        stored, known = self.source.phrase(base)
        whole, at = Piece(), 0
        while at < len(stored):
            end = at + self.source.random.randint(2, 7)
            text = self.text(stored[at:end], shown(stored[at:end], base))
            whole += self.source.choose(text, text.within('{', '}'), text.within('{\\insrsid77 ', '}'))
            whole += Piece(self.source.choose('{\\*\\bkmkstart b1}', '{\\*\\bkmkend b1}', '', '\\lang1033 '))
            at = end
        return whole

    def unicode(self, base, depth):
        text = self.source.choose('ສະບາຍດີ', 'ພາສາລາວ')
        return self.text(text, text).within('{' + self.switch(self.source.font()), '}')

    def symbols(self, base, depth):
        font = self.source.font()
        stored, known = self.source.phrase(font)
        return self.text(''.join(chr(0xF000 + byte_of(c)) for c in stored), known).within('{' + self.switch(font), '}')

    def tabs(self, base, depth):
        return self.words(base) + self.source.choose(Piece('\\tab ', '\t'), Piece('\\line ', '\n')) + self.words(base)

    def field(self, base, depth):
        code = self.source.choose('PAGE', 'MERGEFIELD x', 'REF _Ref1 \\\\h')
        return Piece(f'{{\\*\\fldinst {{{self.switch(self.source.font())}{code}}}}}', field(code.replace('\\\\', '\\'))).within('{\\field', '') + \
            self.group(base, depth).within('{\\fldrslt ', '}}')

    def note(self, base, depth):
        return self.apart(base, depth, '{\\super\\chftn}{\\footnote ', '}')

    def comment(self, base, depth):
        return self.apart(base, depth, '{\\*\\atnid a}{\\*\\atnauthor A}{\\*\\annotation ', '}')

    def box(self, base, depth):
        return self.apart(base, depth, '{\\shp{\\*\\shpinst\\shpleft0{\\sp{\\sn shapeType}{\\sv 202}}{\\shptxt ', '}}}')

    def apart(self, base, depth, before, after):
        if depth:
            return self.group(base, depth)
        inside = self.paragraph(1)
        self.inner += Piece(inner=inside.inner)
        return Piece(before + inside.markup + after)

    def removed(self, base, depth):
        return self.words(base).marked(deleted).within('{\\deleted\\revauthdel1 ', '}')

    def paragraph(self, depth=0, end='\\par\r\n'):
        base = self.source.choose(self.fonts[0], self.source.font())
        start = '\\pard\\plain ' + ('\\intbl ' if end == '\\cell ' else '') + ('' if base == self.fonts[0] else f'\\s{1 + depth}' + self.switch(base))
        content = joined(getattr(self, self.source.choose(*CONTENTS))(base, depth) for _ in range(self.source.random.randint(1, 3)))
        if self.source.often(0.7):
            content += self.words(base)
        return content.as_paragraph(start, end)

    def font_table(self):
        rows = ''
        for i, font in enumerate(self.fonts):
            charset = self.source.choose(0, 0, 0, 2) if font in FONTS else 0
            more = self.source.choose('', '{\\*\\panose 02020603050405020304}', '\\fprq2 ') if self.writer == 'word' else '\\fprq2 '
            name = self.source.spelled(font) + self.source.choose('', '{\\*\\falt Arial}')
            rows += f'{{\\f{self.first + i}\\{self.source.choose("fnil", "froman", "fswiss")}\\fcharset{charset}{more if more else " "}{name};}}\r\n'
        return f'{{\\fonttbl{rows}}}'

    def write(self):
        head = self.paragraph(1)
        self.inner = Piece(inner=head.inner) + self.inner
        body = joined(self.paragraph() for _ in range(4))
        row = '\\trowd\\cellx4000\\cellx8000 '
        body += (self.paragraph(2, '\\cell ') + self.paragraph(2, '\\cell ')).within(row, '\\row\\pard ') + self.paragraph()
        styles = f'{{\\stylesheet{{\\s0{self.switch(self.fonts[0])}Normal;}}{{\\s1\\sbasedon0{self.switch(self.source.font())}heading 1;}}{{\\*\\cs10 \\additive{self.switch(self.source.font())}Emphasis;}}}}'
        text = (f'{{\\rtf1\\ansi\\ansicpg1252\\deff{self.first}{"" if self.uc == 1 else chr(92) + "uc" + str(self.uc)}{self.font_table()}{{\\colortbl;\\red0\\green0\\blue0;}}\r\n{styles}'
                f'{{\\*\\generator T;}}{{\\info{{\\title A}}}}\\paperw11906{{\\header {head.markup}}}{body.markup}'
                f'{{\\pict\\pngblip\\picw1\\pich1 {picture().hex()}}}}}')
        return text.encode('ascii'), {'main': body, 'inner': self.inner}


def make_rtf(source):
    return RichText(source, source.choose('word', 'office')).write()
