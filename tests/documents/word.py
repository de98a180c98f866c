"""Documents of word processors: .docx, the same as one XML file (flat OPC), and WordprocessingML 2003."""
import base64, re
from legacy_fonts import byte_of, code_of, shown
from pieces import FONT_OF_TODAY, Piece, deleted, escape, field, joined, package, picture

SPACES = {
    'w': 'http://schemas.openxmlformats.org/wordprocessingml/2006/main', 'v': 'urn:schemas-microsoft-com:vml',
    'r': 'http://schemas.openxmlformats.org/officeDocument/2006/relationships',
    'mc': 'http://schemas.openxmlformats.org/markup-compatibility/2006',
    'wps': 'http://schemas.microsoft.com/office/word/2010/wordprocessingShape',
    'wp': 'http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing',
    'a': 'http://schemas.openxmlformats.org/drawingml/2006/main'}
SPACES_2003 = {'w': 'http://schemas.microsoft.com/office/word/2003/wordml', 'v': 'urn:schemas-microsoft-com:vml',
               'wx': 'http://schemas.microsoft.com/office/word/2003/auxHint', 'aml': 'http://schemas.microsoft.com/aml/2001/core'}
TYPES = {'document': 'document.main', 'styles': 'styles', 'numbering': 'numbering', 'footnotes': 'footnotes', 'endnotes': 'endnotes',
         'comments': 'comments', 'header1': 'header', 'footer1': 'footer', 'fontTable': 'fontTable', 'settings': 'settings'}
DEFAULT = 'default'  # of the whole document
CONTENTS = ('inherit', 'direct', 'styled', 'cut', 'slots', 'unicode', 'symbols', 'sign', 'latin', 'tabs', 'simple_field', 'field',
            'inserted', 'removed', 'control', 'link', 'note', 'comment', 'box')


class Word:
    """One document. Where text gets its font from is kept in `styles`, so that the known text doesn't need a reader."""

    def __init__(self, source, flavour, contents=CONTENTS):
        self.source, self.flavour, self.contents = source, flavour, contents
        self.is2003 = flavour == '2003'
        self.parts = {name: Piece() for name in ('document', 'footnotes', 'endnotes', 'comments', 'header1', 'footer1', 'numbering')}
        self.ids, self.in_table = 1, False
        self.themed = source.choose(source.font(), 'Calibri')
        self.make_styles()

    def make_styles(self):
        font, often = self.source.font, self.source.often
        default = self.source.choose('Times New Roman', 'Times New Roman', font(), self.themed)
        normal = font() if often(0.3) else None
        # id: kind, base, font
        self.styles = {
            'Normal': ('paragraph', None, normal), 'Deep': ('paragraph', 'Middle', None), 'Middle': ('paragraph', 'Top', None),
            'Top': ('paragraph', 'Normal', font()), 'Own': ('paragraph', 'Deep', font()), 'Latin': ('paragraph', 'Middle', 'Arial'),
            'NoteText': ('paragraph', 'Normal', font() if often() else None), 'Strong': ('character', 'Emphasis', None),
            'Emphasis': ('character', None, font()), 'LatinWords': ('character', 'Emphasis', 'Arial'), 'Bold': ('character', None, None),
            'Grid': ('table', 'TableNormal', font()), 'GridChild': ('table', 'Grid', None), 'TableNormal': ('table', None, None)}
        self.styles[DEFAULT] = ('', None, default)

    def font_of(self, style, table=None, inherited=None):
        """The font that a style gives to text, by its bases."""
        at = style
        while at and at != DEFAULT:
            kind, base, font = self.styles[at]
            if font:
                return font
            at = base
        if inherited:
            return inherited
        return self.font_of(table) if table and table != DEFAULT else self.styles[DEFAULT][2]

    def rfonts(self, font, source=None):
        """w:rFonts that shows Latin letters and those of code page 1252 in a font."""
        source = source or self.source
        other = source.font() if source.often(0.2) else FONT_OF_TODAY
        if not self.is2003 and font == self.themed and source.often():
            names = 'w:asciiTheme="minorHAnsi" w:hAnsiTheme="minorHAnsi"' + source.choose('', f' w:ascii="{other}" w:hAnsi="{other}"')
            return f'<w:rFonts {names}/>'
        names = {'ascii': font, 'hAnsi': font}
        extra = source.choose('', 'cs', 'all', 'other')
        if extra in ('cs', 'all'):
            names['cs'] = font
        if extra == 'all':
            names['eastAsia'] = font
        if extra == 'other':  # the font of other scripts, which no letter here has
            names['cs'] = other
        if source.often(0.15) and extra == 'all':
            names['hint'] = source.choose('eastAsia', 'default')
        order = list(names)
        source.random.shuffle(order)
        of2003 = {'hAnsi': 'h-ansi', 'eastAsia': 'fareast'} if self.is2003 else {}
        markup = ' '.join(f'w:{of2003.get(n, n)}="{source.spelled(names[n])}"' for n in order)
        hint = f'<wx:font wx:val="{font}"/>' if self.is2003 and source.often() else ''
        return f'<w:rFonts {markup}/>{hint}'

    # ---- Pieces of a paragraph ----

    def run(self, inside, properties=''):
        rsid = self.source.choose('', f' w:rsidRPr="00{self.source.random.randrange(1 << 20):06X}"') if not self.is2003 else ''
        more = self.source.choose('', '', '<w:b/>', '<w:sz w:val="28"/><w:lang w:val="en-US" w:bidi="lo-LA"/>')
        both = properties + more
        return inside.within(f'<w:r{rsid}>' + (f'<w:rPr>{both}</w:rPr>' if both else ''), '</w:r>')

    def text(self, stored, known, tag='t'):
        space = ' xml:space="preserve"' if stored != stored.strip() or self.source.often(0.2) else ''
        if self.source.often(0.04) and ']]>' not in stored:
            return Piece(f'<w:{tag}{space}><![CDATA[{stored}]]></w:{tag}>', stored, known)
        if tag == 't' and '\xad' in stored and self.source.often(0.1):  # a letter of legacy fonts, kept as what it is in others
            pieces = [f'<w:t xml:space="preserve">{escape(s)}</w:t>' if s else '' for s in stored.split('\xad')]
            return Piece('<w:softHyphen/>'.join(pieces), stored, known)
        return Piece(f'<w:{tag}{space}>{escape(stored, self.source)}</w:{tag}>', stored, known)

    def words(self, font, properties='', tag='t'):
        return self.run(self.text(*self.source.phrase(font), tag), properties)

    def inherit(self, base, depth):
        return self.words(base, '<w:rStyle w:val="Bold"/>' if self.source.often(0.2) else '')

    def direct(self, base, depth):
        font = self.source.font()
        return self.words(font, self.rfonts(font))

    def latin(self, base, depth):
        return self.words('Arial', self.rfonts('Arial'))

    def styled(self, base, depth):
        style = self.source.choose('Strong', 'Emphasis', 'LatinWords', 'Bold')
        return self.words(self.font_of(style, inherited=base), f'<w:rStyle w:val="{style}"/>')

    def cut(self, base, depth):
        """A phrase in runs that begin inside a syllable."""
        font = self.source.choose(base, self.source.font())
        properties = '' if font == base else self.rfonts(font)
        stored, known = self.source.phrase(font)
        whole, at = Piece(), 0
        self.ids += 1
        between = ('<w:proofErr w:type="spellStart"/>', f'<w:bookmarkStart w:id="{self.ids}" w:name="b{self.ids}"/>', '',
                   f'<w:bookmarkEnd w:id="{self.ids}"/>')
        if self.is2003:
            between = ('<w:proofErr w:type="spellStart"/>', '')
        while at < len(stored):
            end = at + self.source.random.randint(1, 7)
            piece = stored[at:end]
            text = self.text(piece, shown(piece, font))
            whole += self.run(text, properties) + Piece(self.source.choose(*between))
            at = end
        return whole

    def slots(self, base, depth):
        """Latin letters in a font of today, the others in a legacy one."""
        font = self.source.font()
        while code_of(font) == 'alice':
            font = self.source.font()
        stored, _ = self.source.phrase(font)
        known = ''.join(c if ord(c) < 0x80 else shown(c, font) for c in stored)
        name = 'h-ansi' if self.is2003 else 'hAnsi'
        return self.run(self.text(stored, known), f'<w:rFonts w:ascii="Arial" w:{name}="{font}" w:cs="Arial"/>')

    def unicode(self, base, depth):
        """Unicode text that a legacy font was put on."""
        text = self.source.choose('ສະບາຍດີ', 'ນ້ຳ', 'ພາສາລາວ ບໍ່', 'ໝູ່ໜັງສື')
        return self.run(self.text(text, text), self.rfonts(self.source.font()))

    def symbols(self, base, depth):
        """Bytes of a font without a code page, as word processors keep them."""
        font = self.source.font()
        stored, known = self.source.phrase(font)
        return self.run(self.text(''.join(chr(0xF000 + byte_of(c)) for c in stored), known), self.rfonts(font))

    def sign(self, base, depth):
        font = self.source.font()
        stored, _ = self.source.phrase(font)
        stored, high = stored[0], self.source.choose(0xF000, 0) if byte_of(stored[0]) >= 0x20 else 0
        character = chr(0xF000 + byte_of(stored)) if high else stored
        return self.run(Piece(f'<w:sym w:font="{font}" w:char="{ord(character):04X}"/>', character, shown(stored, font)))

    def tabs(self, base, depth):
        between = self.source.choose(Piece('<w:tab/>', '\t'), Piece('<w:br/>', '\n'), Piece('<w:noBreakHyphen/>', '\u2011'))
        return self.run(self.text(*self.source.phrase(base)) + between + self.text(*self.source.phrase(base)))

    def code(self):
        return self.source.choose(' PAGE ', ' MERGEFIELD Àà ', ' REF _Ref1 \\h ', ' IF 1=1 ')

    def simple_field(self, base, depth):
        code = self.code()
        return Piece('', field(code)) + self.inherit(base, depth).within(f'<w:fldSimple w:instr="{escape(code, None, True)}">', '</w:fldSimple>')

    def field(self, base, depth):
        font = self.source.font()
        properties = self.rfonts(font)
        mark = lambda kind: self.run(Piece(f'<w:fldChar w:fldCharType="{kind}"/>'), properties)  # noqa: E731
        code = self.code()
        code = Piece(f'<w:instrText xml:space="preserve">{escape(code)}</w:instrText>', field(code))
        return mark('begin') + self.run(code, properties) + mark('separate') + self.words(font, properties) + mark('end')

    def change(self, kind, content):
        self.ids += 1
        if self.is2003:
            kind = {'ins': 'Insertion', 'del': 'Deletion'}[kind]
            return content.within(f'<aml:annotation aml:id="{self.ids}" w:type="Word.{kind}" aml:author="a" '
                                  f'aml:createdate="2009-03-01T00:00:00Z"><aml:content>', '</aml:content></aml:annotation>')
        return content.within(f'<w:{kind} w:id="{self.ids}" w:author="ຄົນ" w:date="2009-03-01T00:00:00Z">', f'</w:{kind}>')

    def inserted(self, base, depth):
        return self.change('ins', self.direct(base, depth))

    def removed(self, base, depth):
        font = self.source.choose(base, self.source.font())
        return self.change('del', self.words(font, '' if font == base else self.rfonts(font), 'delText').marked(deleted))

    def control(self, base, depth):
        if self.is2003:
            return self.inherit(base, depth)
        return self.direct(base, depth).within('<w:sdt><w:sdtPr><w:alias w:val="A"/></w:sdtPr><w:sdtContent>', '</w:sdtContent></w:sdt>')

    def link(self, base, depth):
        where = '<w:hlink w:bookmark="b1">' if self.is2003 else '<w:hyperlink w:anchor="b1" w:history="1">'
        return self.styled(base, depth).within(where, '</w:hlink>' if self.is2003 else '</w:hyperlink>')

    def note(self, base, depth):
        kind = self.source.choose('footnote', 'endnote')
        if depth:
            return self.inherit(base, depth)
        self.ids += 1
        body = joined(self.paragraph(style='NoteText', depth=2) for _ in range(self.source.random.randint(1, 2)))
        if self.is2003:
            return self.run(body.within(f'<w:{kind}>', f'</w:{kind}>'))
        self.parts[kind + 's'] += body.within(f'<w:{kind} w:id="{self.ids}">', f'</w:{kind}>')
        return self.run(Piece(f'<w:{kind}Reference w:id="{self.ids}"/>'))

    def comment(self, base, depth):
        if depth or self.in_table:  # LibreOffice ends where a cell has one
            return self.direct(base, depth)
        self.ids += 1
        body = self.paragraph(style='NoteText', depth=2)
        if self.is2003:
            body = body.within('<aml:content>', '</aml:content>')
            return self.run(body.within(f'<aml:annotation aml:id="{self.ids}" w:type="Word.Comment" aml:author="a" w:initials="a">',
                                        '</aml:annotation>'))
        self.parts['comments'] += body.within(f'<w:comment w:id="{self.ids}" w:author="A" w:initials="a">', '</w:comment>')
        return self.run(Piece(f'<w:commentReference w:id="{self.ids}"/>'))

    def box(self, base, depth):
        if depth > 1:
            return self.cut(base, depth)
        body = joined(self.paragraph(depth=2) for _ in range(self.source.random.randint(1, 2))).within('<w:txbxContent>', '</w:txbxContent>')
        shape = body.within('<w:pict><v:shape id="s1" style="width:9pt"><v:textbox>', '</v:textbox></v:shape></w:pict>')
        if self.is2003 or self.source.often():
            return self.run(shape)
        today = body.within('<w:drawing><wp:inline><a:graphic><a:graphicData uri="u"><wps:wsp><wps:txbx>',
                            '</wps:txbx></wps:wsp></a:graphicData></a:graphic></wp:inline></w:drawing>')
        return self.run((today.within('<mc:Choice Requires="wps">', '</mc:Choice>') +
                         shape.within('<mc:Fallback>', '</mc:Fallback>')).within('<mc:AlternateContent>', '</mc:AlternateContent>'))

    # ---- Paragraphs ----

    def paragraph(self, style=None, table=None, depth=0, numbered=False):
        style = style or self.source.choose('Normal', 'Top', 'Deep', 'Own', 'Latin', 'Normal')
        base = self.font_of(style, table)
        content = Piece()
        for _ in range(self.source.random.randint(1, 3)):
            content += getattr(self, self.source.choose(*self.contents))(base, depth)
        if self.source.often(0.7):  # the paragraph's own font again, whatever stood inside
            content += self.inherit(base, depth)
        properties = '' if style == 'Normal' else f'<w:pStyle w:val="{style}"/>'
        if numbered:
            number = '<w:ilvl w:val="0"/><w:ilfo w:val="1"/>' if self.is2003 else '<w:ilvl w:val="0"/><w:numId w:val="1"/>'
            properties += ('<w:listPr>{}</w:listPr>' if self.is2003 else '<w:numPr>{}</w:numPr>').format(number)
        if self.source.often(0.3):  # the paragraph mark alone has this font
            properties += f'<w:rPr>{self.rfonts(self.source.font())}</w:rPr>'
        return content.as_paragraph('<w:p>' + (f'<w:pPr>{properties}</w:pPr>' if properties else ''), '</w:p>\n')

    def table(self, depth=0):
        style = self.source.choose('Grid', 'GridChild', 'TableNormal')
        cell = lambda: self.paragraph(style=self.source.choose('Normal', 'Own'), table=style)  # noqa: E731
        rows, self.in_table = Piece(), True
        for _ in range(2):
            cells = cell().within('<w:tc>', '</w:tc>')
            cells += (cell() + (self.table(1) if not depth else Piece()) + cell()).within('<w:tc><w:tcPr/>', '</w:tc>')
            rows += cells.within('<w:tr>', '</w:tr>')
        self.in_table = depth > 0
        return rows.within(f'<w:tbl><w:tblPr><w:tblStyle w:val="{style}"/></w:tblPr>', '</w:tbl>\n')

    def level(self, number):
        """A level of a list: its label is text in the level's font, but for the places of numbers."""
        font = self.source.choose(self.source.font(), 'Symbol')
        if font == 'Symbol':
            stored = known = self.source.choose('\uf0b7', '%1.')
        else:
            (stored, known), (after, known_after) = self.source.phrase(font), self.source.phrase(font)
            stored, known = f'{stored}%{number + 1}{after}', f'{known}%{number + 1}{known_after}'
        text = Piece(f'<w:lvlText w:val="{escape(stored, self.source, True)}"/>', stored, known)
        kind = '<w:nfc w:val="0"/>' if self.is2003 else '<w:numFmt w:val="decimal"/>'
        return text.as_paragraph(f'<w:lvl w:ilvl="{number}"><w:start w:val="1"/>{kind}', f'<w:rPr>{self.rfonts(font)}</w:rPr></w:lvl>')

    def style_sheet(self):
        rows = []
        for name, (kind, base, font) in self.styles.items():
            if name == DEFAULT:
                continue
            first = ' w:default="{}"'.format('on' if self.is2003 else '1') if name in ('Normal', 'TableNormal') else ''
            based = f'<w:basedOn w:val="{base}"/>' if base else ''
            fonts = f'<w:rPr>{self.rfonts(font)}</w:rPr>' if font else ''
            rows.append(f'<w:style w:type="{kind}"{first} w:styleId="{name}"><w:name w:val="{name} name"/>{based}{fonts}</w:style>\n')
        self.source.random.shuffle(rows)
        fonts = self.rfonts(self.styles[DEFAULT][2])
        if self.is2003:
            return f'<w:styles>{"".join(rows)}</w:styles>'
        return f'<w:docDefaults><w:rPrDefault><w:rPr>{fonts}</w:rPr></w:rPrDefault></w:docDefaults>{"".join(rows)}'

    def write(self):
        body = Piece()
        for i in range(self.source.random.randint(4, 7)):
            body += self.table() if i == 2 and self.source.often(0.6) else self.paragraph(numbered=self.source.often(0.2))
        self.parts['document'] += body
        self.parts['header1'] += self.paragraph(style='Normal', depth=1)
        self.parts['footer1'] += self.paragraph(depth=1)
        self.parts['numbering'] += joined(self.level(i) for i in range(2))
        return self.write2003() if self.is2003 else self.write_parts()

    def spaces(self):
        return ''.join(f' xmlns:{prefix}="{name}"' for prefix, name in (SPACES_2003 if self.is2003 else SPACES).items())

    def write2003(self):
        font = self.styles[DEFAULT][2]
        lists = self.parts['numbering'].within('<w:lists><w:listDef w:listDefId="0">',
                                               '</w:listDef><w:list w:ilfo="1"><w:ilst w:val="0"/></w:list></w:lists>')
        defaults = f'<w:fonts><w:defaultFonts w:ascii="{font}" w:fareast="{font}" w:h-ansi="{font}" w:cs="{font}"/></w:fonts>'
        section = (self.parts['header1'].within('<w:hdr w:type="odd">', '</w:hdr>') +
                   self.parts['footer1'].within('<w:ftr w:type="odd">', '</w:ftr>')).within('<w:sectPr>', '</w:sectPr>')
        body = (self.parts['document'] + section).within('<w:body><wx:sect>', '</wx:sect></w:body>')
        whole = lists.within(defaults, self.style_sheet()) + body
        whole = whole.within(f'<w:wordDocument{self.spaces()} w:macrosPresent="no">', '</w:wordDocument>')
        head = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n<?mso-application progid="Word.Document"?>\n'
        return head + self.disguised(whole.markup), {'document': whole}

    def write_parts(self):
        root = {'document': 'document', 'numbering': 'numbering', 'footnotes': 'footnotes', 'endnotes': 'endnotes',
                'comments': 'comments', 'header1': 'hdr', 'footer1': 'ftr'}
        parts, known = {}, {}
        for name, piece in self.parts.items():
            if name == 'document':
                piece = piece.within('<w:body>', '<w:sectPr><w:headerReference w:type="default" r:id="header1"/><w:footerReference '
                                     'w:type="default" r:id="footer1"/></w:sectPr></w:body>')
            if name == 'numbering':
                piece = piece.within('<w:abstractNum w:abstractNumId="0">',
                                     '</w:abstractNum><w:num w:numId="1"><w:abstractNumId w:val="0"/></w:num>')
            parts[name] = self.disguised(f'<w:{root[name]}{self.spaces()}>{piece.markup}</w:{root[name]}>')
            known[f'word/{name}.xml'] = piece
        parts['styles'] = self.disguised(f'<w:styles{self.spaces()}>{self.style_sheet()}</w:styles>')
        names = {font for _, _, font in self.styles.values() if font}
        faces = ''.join(f'<w:font w:name="{name}"><w:charset w:val="00"/></w:font>' for name in sorted(names))
        parts['fontTable'] = self.disguised(f'<w:fonts{self.spaces()}>{faces}</w:fonts>')
        parts['settings'] = f'<w:settings{self.spaces()}><w:zoom w:percent="100"/></w:settings>'
        theme = (f'<a:theme xmlns:a="{SPACES["a"]}" name="T"><a:themeElements><a:fontScheme name="F"><a:majorFont><a:latin '
                 f'typeface="Cambria"/><a:ea typeface=""/><a:cs typeface=""/></a:majorFont><a:minorFont><a:latin '
                 f'typeface="{self.themed}"/><a:ea typeface=""/><a:cs typeface="Arial"/></a:minorFont></a:fontScheme>'
                 f'</a:themeElements></a:theme>')
        head = self.source.choose('<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\r\n', "<?xml version='1.0' encoding='utf-8'?>\n", '', '\ufeff')
        whole = {f'word/{name}.xml': head + text for name, text in parts.items()}
        whole['word/theme/theme1.xml'] = head + theme
        if self.flavour == 'strict':
            whole = {name: text.replace('http://schemas.openxmlformats.org/wordprocessingml/2006/main', 'http://purl.oclc.org/ooxml/wordprocessingml/main')
                     .replace('http://schemas.openxmlformats.org/officeDocument/2006', 'http://purl.oclc.org/ooxml/officeDocument')
                     .replace('http://schemas.openxmlformats.org/drawingml/2006/', 'http://purl.oclc.org/ooxml/drawingml/') for name, text in whole.items()}
        return whole, known

    def disguised(self, markup):
        """The same markup as another program writes it: other quotes, another prefix."""
        if self.flavour == 'plain' or self.source.often(0.6):
            return markup
        prefix, quotes = self.source.choose('w', 'ns0', 'W'), self.source.often()

        def tag(match):
            text = re.sub(r'(?<=[</ :])w:', prefix + ':', match[0].replace(' xmlns:w=', f' xmlns:{prefix}='))
            return text.replace('"', "'") if quotes and "'" not in text else text
        return re.sub(r'<!\[CDATA\[.*?\]\]>|<[^>]*>', lambda m: m[0] if m[0].startswith('<!') else tag(m), markup, flags=re.S)


RELATIONS = 'http://schemas.openxmlformats.org/officeDocument/2006/relationships'
MIME = 'application/vnd.openxmlformats-officedocument.'


def content_types(overrides):
    rows = ''.join(f'<Override PartName="/{name}" ContentType="{kind}"/>' for name, kind in overrides.items())
    return ('<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">'
            '<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/><Default Extension="xml" '
            f'ContentType="application/xml"/><Default Extension="png" ContentType="image/png"/>{rows}</Types>')


def relations(rows, strict=False):
    base = 'http://purl.oclc.org/ooxml/officeDocument/relationships' if strict else RELATIONS
    rows = ''.join(f'<Relationship Id="{name}" Type="{base}/{kind}" Target="{target}"/>' for name, kind, target in rows)
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">'
            f'{rows}</Relationships>')


def docx_parts(source, flavour):
    word = Word(source, flavour)
    texts, known = word.write()
    strict = flavour == 'strict'
    kinds = {f'word/{name}.xml': f'{MIME}wordprocessingml.{kind}+xml' for name, kind in TYPES.items()}
    kinds['word/theme/theme1.xml'] = MIME + 'theme+xml'
    links = [(name, re.sub(r'\d', '', name), f'{name}.xml') for name in TYPES if name != 'document'] + [('theme', 'theme', 'theme/theme1.xml')]
    parts = {'[Content_Types].xml': content_types(kinds), '_rels/.rels': relations([('r1', 'officeDocument', 'word/document.xml')], strict),
             'word/_rels/document.xml.rels': relations(links, strict), **texts, 'word/media/image1.png': picture(),
             'docProps/app.xml': '<Properties xmlns="u"><Application>T</Application></Properties>'}
    return parts, known, kinds


def make_docx(source):
    parts, known, _ = docx_parts(source, source.choose('docx', 'docx', 'strict', 'plain'))
    return package(parts, source), known


def make_flat(source):
    """document.xml comes first, long before the styles that it needs."""
    parts, known, kinds = docx_parts(source, 'docx')
    markup = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n<?mso-application progid="Word.Document"?>\n'
    markup += '<pkg:package xmlns:pkg="http://schemas.microsoft.com/office/2006/xmlPackage">\n'
    for name, content in parts.items():
        if name == '[Content_Types].xml':
            continue
        kind = kinds.get(name, 'image/png' if name.endswith('.png') else 'application/vnd.openxmlformats-package.relationships+xml'
                         if name.endswith('.rels') else 'application/xml')
        if isinstance(content, bytes):
            inside = f'<pkg:binaryData>{base64.b64encode(content).decode()}</pkg:binaryData>'
        else:
            inside = '<pkg:xmlData>' + re.sub(r'^\ufeff?(<\?xml.*?\?>\s*)?', '', content, flags=re.S) + '</pkg:xmlData>'
        markup += f'<pkg:part pkg:name="/{name}" pkg:contentType="{kind}">{inside}</pkg:part>\n'
    return (markup + '</pkg:package>').encode('utf8'), known


PLAIN = ('inherit', 'direct', 'styled', 'latin', 'tabs', 'inserted', 'removed', 'link')


def make_2003(source):
    markup, known = Word(source, '2003').write()
    return markup.encode('utf8'), known
