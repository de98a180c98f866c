"""Pages of the 1990s, .html: fonts by <font face>, by style attributes and by style sheets, in tags that often stay open."""
from html.entities import codepoint2name
from legacy_fonts import byte_of
from pieces import Piece, joined

CHARSETS = {'utf-8': '<meta charset="utf-8">', 'windows-1252': '<META HTTP-EQUIV="Content-Type" CONTENT="text/html; charset=windows-1252">',
            'iso-8859-1': "<meta http-equiv=content-type content='text/html; charset=iso-8859-1'>", 'none': ''}


def in_bytes(text, charset):
    """A page's bytes; what code page 1252 doesn't have is a reference there."""
    if charset == 'utf-8':
        return text.encode('utf8')
    return b''.join(bytes([byte_of(c)]) if byte_of(c) < 0x100 else b'&#%d;' % ord(c) for c in text)


class Page:
    def __init__(self, source, charset):
        self.source, self.charset = source, charset
        self.capitals = source.often(0.4)
        font, often = source.font, source.often
        self.body = font() if often(0.4) else None
        self.rules = {'p': font() if often(0.3) else None, 'td': font() if often() else None, 'li': font() if often() else None,
                      'h1': font() if often() else None, '.lao': font(), '.other': font(), '.latin': 'Arial', 'p.lao': font() if often() else None}

    def tag(self, name, attributes=''):
        name = name.upper() if self.capitals else name
        return f'<{name}{" " if attributes else ""}{attributes}>'

    def families(self, font, quote):
        """A list of fonts, of which the first one is the text's."""
        name = self.source.spelled(font)
        if ' ' in name or self.source.often():
            name = quote + name + quote
        return name + self.source.choose('', ', Arial', ',sans-serif')

    def sheet(self):
        rows = [f'{selector} {{ {self.source.choose("color: #000080; ", "", "/* } */ ")}font-family: {self.families(font, chr(34))} }}'
                for selector, font in self.rules.items() if font]
        if self.body:
            rows.append(f'BODY {{font: 12pt {self.families(self.body, chr(39))}; margin:0}}')
        self.source.random.shuffle(rows)
        sheet = '\n'.join(rows)
        return f'<style type="text/css">{self.source.choose(sheet, f"<!-- {sheet} -->")}</style>'

    def text(self, stored, known):
        out = ''
        for i, c in enumerate(stored):
            number = byte_of(c)
            if c in '&<>' or (c == '"' and self.source.often(0.2)):
                bare = c == '&' and stored[i + 1:i + 2] in (' ', '') or c == '>'
                out += c if bare and self.source.often() else {'&': '&amp;', '<': '&lt;', '>': '&gt;', '"': '&quot;'}[c]
            elif number > 0x7F and self.source.often(0.2):
                name = codepoint2name.get(ord(c))
                out += f'&{name};' if name and self.source.often(0.6) else self.source.choose(f'&#{min(number, ord(c))};', f'&#x{ord(c):x};')
            elif number == 0xA0:
                out += '&nbsp;'
            else:
                out += c
        return Piece(out, stored, known)

    def words(self, font):
        return self.text(*self.source.phrase(font))

    def inline(self, base, depth=0):
        kind = self.source.choose('plain', 'font', 'span', 'class', 'latin', 'bold', 'break', 'unicode')
        font = self.source.choose(self.source.font(), self.source.font(), 'Arial')
        inside = lambda f: self.words(f) + (self.inline(f, 1) + self.words(f) if not depth and self.source.often(0.4) else Piece())  # noqa: E731
        if kind == 'font':
            quote = self.source.choose('"', "'", '' if ' ' not in font else '"')
            more = self.source.choose('', ' size=3 color=#ff0000', ' COLOR="red"')
            name = self.source.spelled(font) + (self.source.choose('', ', Arial', ',Times') if quote else '')
            return inside(font).within(self.tag('font', f'{self.source.choose("face", "FACE")}={quote}{name}{quote}{more}'), self.tag('/font'))
        if kind == 'span':
            style = f'color:red; {self.source.choose("font-family", "FONT-FAMILY")}: {self.families(font, chr(39))}'
            return inside(font).within(self.tag('span', f'style="{style}"'), self.tag('/span'))
        if kind == 'class':
            name = self.source.choose('lao', 'other', 'latin')
            return inside(self.rules['.' + name]).within(self.tag('span', f'class="{self.source.choose("", "x ")}{name}"'), self.tag('/span'))
        if kind == 'latin':
            return self.words('Arial').within(self.tag('font', 'face="Arial"'), self.tag('/font'))
        if kind == 'bold':
            return inside(base).within(self.tag('b'), self.tag('/b'))
        if kind == 'break':
            return self.words(base) + Piece(self.tag('br'), '\n') + self.words(base)
        if kind == 'unicode':
            return Piece('ພາສາລາວ', 'ພາສາລາວ').within(self.tag('font', f'face="{self.source.font()}"'), self.tag('/font'))
        return self.words(base)

    def block(self, name, base, closed):
        """A block and its font; unless it's closed the next one ends it."""
        font, attributes = self.rules.get(name) or base, ''
        if self.source.often(0.3):
            kind = self.source.choose('lao', 'other')
            font = self.rules.get(f'{name}.{kind}') or self.rules['.' + kind]
            attributes = self.source.choose(f'class={kind}', f'align=left CLASS="{kind}"')
        content = joined(self.inline(font) for _ in range(self.source.random.randint(1, 3)))
        if self.source.often():
            content += self.words(font)
        return content.as_paragraph(self.tag(name, attributes), (self.tag('/' + name) if closed else '') + '\n')

    def write(self):
        base = self.body or 'Times'
        closed = self.source.often()
        body = joined(self.block('p', base, closed) for _ in range(3))
        body += self.block('h1', base, True) + self.block('div', base, True)
        body += joined(self.block('li', base, closed) for _ in range(2)).within(self.tag('ul'), self.tag('/ul'))
        rows = joined(joined(self.block('td', base, closed) for _ in range(2)).within(self.tag('tr'), self.tag('/tr') if closed else '') for _ in range(2))
        body += rows.within(self.tag('table', 'border=1'), self.tag('/table'))
        font = self.source.font()
        body += (self.block('p', font, True) + self.block('p', font, True)).within(self.tag('font', f'face="{font}"'), self.tag('/font'))
        body += self.block('p', base, closed)
        kept = f'<script>var a = "<b>\u00c0\u00c1</b>"; /* {self.source.font()} */</script><!-- \u00c0 <font face="Saysettha Lao">\u00c1 -->'
        title = Piece('Title', 'Title').as_paragraph('<title>', '</title>')
        head = title.within('<head>' + CHARSETS[self.charset], self.sheet() + '</head>\n')
        start = self.source.choose('<!DOCTYPE HTML PUBLIC "-//W3C//DTD HTML 3.2//EN">\n', '<!doctype html>', '', '\n')
        whole = (head + body.within('<body bgcolor=white>' + kept, '</body>')).within(start + '<html>', '</html>\n')
        return in_bytes(whole.markup, self.charset), {'document': whole}


def make_html(source):
    return Page(source, source.choose(*CHARSETS)).write()
