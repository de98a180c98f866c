"""OpenDocument: texts, spreadsheets and presentations, packed (.odt, .ods, .odp) and as one file (.fodt …)."""
from legacy_fonts import byte_of, shown
from pieces import FONT_OF_TODAY, Piece, deleted, escape, joined, package, picture

OASIS = 'urn:oasis:names:tc:opendocument:xmlns:'
SPACES = ''.join(f' xmlns:{n}="{OASIS}{u}:1.0"' for n, u in (
    ('office', 'office'), ('style', 'style'), ('text', 'text'), ('table', 'table'), ('draw', 'drawing'), ('presentation', 'presentation'),
    ('fo', 'xsl-fo-compatible'), ('svg', 'svg-compatible'), ('manifest', 'manifest'))) + (
    ' xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:xlink="http://www.w3.org/1999/xlink"')
MIME = 'application/vnd.oasis.opendocument.'
FAMILIES = {'text': (), 'spreadsheet': ('table-cell',), 'presentation': ('graphic', 'presentation')}
CONTENTS = ('plain', 'span', 'latin', 'nested', 'cut', 'unicode', 'symbols', 'tabs', 'link', 'note', 'annotation', 'frame', 'changed')
OF_TEXTS = ('link', 'note', 'annotation', 'frame', 'changed')


class OpenDocument:
    def __init__(self, source, kind, flat, contents=CONTENTS):
        self.source, self.kind, self.flat = source, kind, flat
        self.contents = [c for c in contents if kind == 'text' or c not in OF_TEXTS]
        self.faces, self.count, self.is_plain = {}, 0, False
        font, often = source.font, source.often
        # (family, name): base, font
        self.named = {
            ('paragraph', 'Standard'): (None, source.choose(None, font())), ('paragraph', 'Deep'): ('Middle', None),
            ('paragraph', 'Middle'): ('Top', None), ('paragraph', 'Top'): ('Standard', font()), ('paragraph', 'Latin'): ('Deep', 'Arial'),
            ('paragraph', 'Footnote'): ('Standard', font() if often() else None), ('text', 'Emphasis'): (None, font()),
            ('text', 'Strong'): ('Emphasis', None), ('text', 'LatinWords'): ('Emphasis', 'Arial'), ('text', 'Bold'): (None, None),
            ('table-cell', 'Default'): (None, source.choose('Arial', font())), ('table-cell', 'Good'): ('Default', font()),
            ('graphic', 'standard'): (None, source.choose('Arial', font())), ('presentation', 'Title1'): (None, font())}
        self.default = source.choose('Times New Roman', font())
        self.automatic = {part: {
            ('paragraph', 'P1'): ('Standard', font()), ('paragraph', 'P2'): ('Deep', None), ('paragraph', 'P3'): ('Top', 'Arial'),
            ('paragraph', 'P4'): ('Latin', font()), ('text', 'T1'): (None, font()), ('text', 'T2'): (None, font()),
            ('text', 'T3'): (None, 'Arial'), ('text', 'T4'): ('Emphasis', None), ('text', 'T5'): (None, None),
            ('table-cell', 'ce1'): ('Default', font()), ('table-cell', 'ce2'): ('Good', None), ('table-cell', 'ce3'): ('Good', 'Arial'),
            ('graphic', 'gr1'): ('standard', font()), ('presentation', 'pr1'): ('Title1', None)} for part in ('content', 'styles')}
        self.part = 'content'

    def font_of(self, family, style):
        """The font of a style by its bases, or None."""
        while style:
            style, font = self.automatic[self.part].get((family, style)) or self.named[family, style]
            if font:
                return font
        return None

    def properties(self, font):
        """style:text-properties of a font, by a declared face or by its own name."""
        if not font:
            return '<style:text-properties fo:font-weight="bold"/>'
        other = self.source.font() if self.source.often(0.3) else FONT_OF_TODAY
        others = self.source.choose('', f' style:font-name-complex="{self.face(other)}"', f' style:font-name-asian="{self.face(font)}"')
        quoted = self.source.choose(f'&apos;{font}&apos;', self.source.spelled(font))
        name = self.source.choose(f'style:font-name="{self.face(font)}"', f'style:font-name="{self.face(font)}"', f'fo:font-family="{quoted}"')
        return f'<style:text-properties {name}{others}/>'

    def face(self, font):
        if font not in self.faces:
            self.faces[font] = self.source.choose(font, f'F{len(self.faces)}', font + '1')
        return self.faces[font]

    def face_rows(self):
        rows = ''
        for font, name in self.faces.items():
            family = font if ' ' not in font and self.source.often() else f'&apos;{font}&apos;'
            pitch = self.source.choose('', ' style:font-pitch="variable"')
            rows += f'<style:font-face style:name="{name}" svg:font-family="{family}"{pitch}/>'
        return f'<office:font-face-decls>{rows}</office:font-face-decls>'

    def style_rows(self, styles):
        families = ('paragraph', 'text') + FAMILIES[self.kind]
        rows = [f'<style:style style:name="{name}" style:family="{family}"' + (f' style:parent-style-name="{base}"' if base else '') +
                f'>{self.properties(font)}</style:style>\n' for (family, name), (base, font) in styles.items() if family in families]
        self.source.random.shuffle(rows)
        return ''.join(rows)

    # ---- Pieces of a paragraph ----

    def text(self, stored, known):
        return Piece(escape(stored, self.source), stored, known)

    def words(self, font):
        return self.text(*self.source.phrase(font))

    def plain(self, base, depth):
        return self.words(base)

    def style(self):
        """A character style and its font, None for that of the place."""
        name = self.source.choose('T1', 'T2', 'T3', 'T5', *(() if self.is_plain else ('T4', 'Emphasis', 'Strong', 'LatinWords', 'Bold')))
        return name, self.font_of('text', name)

    def span(self, base, depth, inside=None):
        name, font = self.style()
        inside = inside(font or base) if inside else self.words(font or base)
        return inside.within(f'<text:span text:style-name="{name}">', '</text:span>')

    def nested(self, base, depth):
        """Text of the outer span goes on behind the inner one."""
        return self.span(base, depth, lambda font: self.words(font) + self.span(font, depth) + self.words(font))

    def latin(self, base, depth):
        return self.words('Arial').within('<text:span text:style-name="T3">', '</text:span>')

    def cut(self, base, depth):
        stored, known = self.source.phrase(base)
        whole, at = Piece(), 0
        while at < len(stored):
            end = at + self.source.random.randint(2, 7)
            self.count += 1
            text = self.text(stored[at:end], shown(stored[at:end], base))
            whole += text if self.source.often() else text.within('<text:span text:style-name="T5">', '</text:span>')
            whole += Piece(self.source.choose(f'<text:bookmark text:name="b{self.count}"/>' if self.kind == 'text' else '', '<text:soft-page-break/>', '', '<!-- x -->'))
            at = end
        return whole

    def unicode(self, base, depth):
        text = self.source.choose('ສະບາຍດີ', 'ນ້ຳ', 'ພາສາລາວ')
        return Piece(text, text).within('<text:span text:style-name="T1">', '</text:span>')

    def symbols(self, base, depth):
        stored, known = self.source.phrase(self.font_of('text', 'T2'))
        return self.text(''.join(chr(0xF000 + byte_of(c)) for c in stored), known).within('<text:span text:style-name="T2">', '</text:span>')

    def tabs(self, base, depth):
        between = self.source.choose(Piece('<text:tab/>', '\t'), Piece('<text:line-break/>', '\n'), Piece(' <text:s text:c="2"/>', '   '), Piece('<text:s/>', ' '))
        return self.words(base) + between + self.words(base)

    def link(self, base, depth):
        return self.span(base, depth).within('<text:a xlink:type="simple" xlink:href="http://a/?b=c&amp;d">', '</text:a>')

    def changed(self, base, depth):
        return self.words(base).within('<text:change-start text:change-id="c2"/>', '<text:change-end text:change-id="c2"/><text:change text:change-id="c1"/>')

    def note(self, base, depth):
        if depth:
            return self.plain(base, depth)
        self.count += 1
        kind = self.source.choose('footnote', 'endnote')
        return joined(self.paragraph('Footnote', 1) for _ in range(1 if self.is_plain else self.source.random.randint(1, 2))).within(
            f'<text:note text:id="n{self.count}" text:note-class="{kind}"><text:note-citation>{self.count}</text:note-citation><text:note-body>',
            '</text:note-body></text:note>')

    def annotation(self, base, depth):
        if depth:
            return self.span(base, depth)
        return self.paragraph('Footnote', 1).within('<office:annotation><dc:creator>A</dc:creator><dc:date>2009-03-01T00:00:00</dc:date>',
                                                    '</office:annotation>')

    def frame(self, base, depth):
        if depth > 1:
            return self.span(base, depth)
        return joined(self.paragraph(None, 2) for _ in range(2)).within(
            '<draw:frame text:anchor-type="as-char" svg:width="9cm" svg:height="9cm"><draw:text-box>', '</draw:text-box></draw:frame>')

    # ---- Paragraphs ----

    def paragraph(self, style=None, depth=0, place=None, tag='p'):
        """place: the font of a cell or a shape, for paragraphs without a style."""
        style = style or (self.source.choose('Standard', 'P1', 'P2', 'P3', 'P4', 'Deep') if not place else None)
        base = place or self.font_of('paragraph', style) or self.default
        only_one = self.is_plain and self.kind == 'spreadsheet'  # the font of the first of several pieces gets lost there
        pieces = 1 if only_one else self.source.random.randint(1, 3)
        content = joined(getattr(self, self.source.choose(*self.contents))(base, depth) for _ in range(pieces))
        if self.source.often(0.7) and not only_one:
            content += self.words(base)
        named = f' text:style-name="{style}"' if style else ''
        level = ' text:outline-level="1"' if tag == 'h' else ''
        return content.as_paragraph(f'<text:{tag}{named}{level}>', f'</text:{tag}>\n')

    def list(self):
        items = joined(self.paragraph().within('<text:list-item>', '</text:list-item>') for _ in range(2))
        return items.within('<text:list>', '</text:list>')

    def table(self):
        cell = lambda: self.paragraph().within('<table:table-cell office:value-type="string">', '</table:table-cell>')  # noqa: E731
        rows = joined((cell() + cell()).within('<table:table-row>', '</table:table-row>') for _ in range(2))
        return rows.within('<table:table table:name="T"><table:table-column table:number-columns-repeated="2"/>', '</table:table>\n')

    def text_body(self):
        body = joined(self.paragraph(tag=self.source.choose('p', 'p', 'h')) for _ in range(self.source.random.randint(3, 5)))
        info = '<office:change-info><dc:creator>A</dc:creator><dc:date>2009-03-01T00:00:00</dc:date></office:change-info>'
        if 'changed' not in self.contents:
            return body + self.list() + self.table() + self.paragraph()
        gone = self.paragraph('P1', 2).within(f'<text:changed-region text:id="c1"><text:deletion>{info}',
                                              f'</text:deletion></text:changed-region><text:changed-region text:id="c2"><text:insertion>{info}'
                                              '</text:insertion></text:changed-region>')
        gone.inner = [tuple(map(deleted, texts)) for texts in gone.inner]
        return gone.within('<text:tracked-changes>', '</text:tracked-changes>') + body + self.list() + self.table() + self.paragraph()

    def spreadsheet_body(self):
        rows = Piece()
        columns = ('ce1', 'ce2', 'ce3')
        for _ in range(4):
            cells = Piece()
            for column in columns:
                style = self.source.choose('', '', 'ce1', 'ce2', 'ce3', 'Good', 'Default')
                named = f' table:style-name="{style}"' if style else ''
                place = self.font_of('table-cell', style or column)
                formula = self.source.choose('', '', ' table:formula="of:=[.A1]"') if not self.is_plain else ''
                cells += self.paragraph(place=place).within(f'<table:table-cell{named}{formula} office:value-type="string">', '</table:table-cell>')
            rows += cells.within('<table:table-row>', '</table:table-row>\n')
        heads = ''.join(f'<table:table-column table:default-cell-style-name="{column}"/>' for column in columns)
        return rows.within(f'<table:table table:name="S">{heads}', '</table:table>')

    def presentation_body(self):
        shapes = Piece()
        for kind, name in (('graphic', 'gr1'), ('presentation', 'pr1'), ('graphic', 'gr1')):
            attribute = 'draw:style-name' if kind == 'graphic' else 'presentation:style-name'
            place = self.font_of(kind, name)
            style, place = ('P1', None) if self.is_plain else (None, place)  # shapes' own fonts get lost there
            shapes += joined(self.paragraph(style, 2, place) for _ in range(2)).within(
                f'<draw:frame {attribute}="{name}" svg:width="9cm" svg:height="9cm"><draw:text-box>', '</draw:text-box></draw:frame>')
        return shapes.within('<draw:page draw:name="p1" draw:master-page-name="Standard">', '</draw:page>')

    def write(self):
        body = getattr(self, f'{self.kind}_body')().within(f'<office:body><office:{self.kind}>', f'</office:{self.kind}></office:body>')
        content_styles = self.style_rows(self.automatic['content'])
        if not self.flat:
            self.part = 'styles'
        family = (FAMILIES[self.kind] or ('paragraph',))[0]
        default = f'<style:default-style style:family="{family}">{self.properties(self.default)}</style:default-style>'
        named = f'<office:styles>{default}{self.style_rows(self.named)}</office:styles>'
        layout = '<style:page-layout style:name="L"/>'
        master = Piece()
        if self.kind == 'text':
            master = self.paragraph('P1', 1).within('<style:header>', '</style:header>') + self.paragraph('P4', 1).within('<style:footer>', '</style:footer>')
        master = master.within('<office:master-styles><style:master-page style:name="Standard" style:page-layout-name="L">',
                               '</style:master-page></office:master-styles>')
        head = '<?xml version="1.0" encoding="UTF-8"?>\n'
        if self.flat:
            whole = (master + body).within(f'{head}<office:document{SPACES} office:version="1.2" office:mimetype="{MIME}{self.kind}">'
                                           f'{self.face_rows()}{named}<office:automatic-styles>{content_styles}{layout}</office:automatic-styles>',
                                           '</office:document>')
            return whole.markup.encode('utf8'), {'document': whole}
        styles_of_styles = self.style_rows(self.automatic['styles'])
        faces = self.face_rows()
        styles = master.within(f'{head}<office:document-styles{SPACES} office:version="1.2">{faces}{named}<office:automatic-styles>'
                               f'{styles_of_styles}{layout}</office:automatic-styles>', '</office:document-styles>')
        content = body.within(f'{head}<office:document-content{SPACES} office:version="1.2">{faces}<office:automatic-styles>{content_styles}'
                              '</office:automatic-styles>', '</office:document-content>')
        names = ('content.xml', 'styles.xml', 'meta.xml')
        rows = ''.join(f'<manifest:file-entry manifest:full-path="{name}" manifest:media-type="text/xml"/>' for name in names)
        rows += '<manifest:file-entry manifest:full-path="Pictures/a.png" manifest:media-type="image/png"/>'
        manifest = (f'{head}<manifest:manifest xmlns:manifest="{OASIS}manifest:1.0" manifest:version="1.2"><manifest:file-entry '
                    f'manifest:full-path="/" manifest:media-type="{MIME}{self.kind}"/>{rows}</manifest:manifest>')
        meta = f'{head}<office:document-meta{SPACES} office:version="1.2"><office:meta/></office:document-meta>'
        parts = {'mimetype': MIME + self.kind, 'content.xml': content.markup, 'styles.xml': styles.markup, 'meta.xml': meta,
                 'Pictures/a.png': picture(), 'META-INF/manifest.xml': manifest}
        return package(parts, self.source, first_stored='mimetype'), {'content.xml': content, 'styles.xml': styles}


def make_packed(kind):
    return lambda source: OpenDocument(source, kind, False).write()


def make_flat(kind):
    return lambda source: OpenDocument(source, kind, True).write()
