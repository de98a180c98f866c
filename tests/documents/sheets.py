"""Spreadsheets, .xlsx: a cell's text stands far from its font, and cells with different fonts may share one text."""
from legacy_fonts import code_of, replacement
from pieces import Piece, escape, joined, package
from word import MIME, RELATIONS, content_types, relations

SPACE = 'http://schemas.openxmlformats.org/spreadsheetml/2006/main'
DRAWING = 'http://schemas.openxmlformats.org/drawingml/2006/'
HEAD = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'


def rich(source, base):
    """Runs of a text of a cell with font `base`: a run without properties has the cell's font."""
    whole = Piece()
    for i in range(source.random.randint(2, 3)):
        font = base if i == 0 and source.often() else source.choose(source.font(), 'Arial')
        stored, known = source.phrase(font)
        properties = '' if font == base else f'<rPr><b/><sz val="11"/><rFont val="{source.spelled(font)}"/><family val="2"/></rPr>'
        whole += Piece(f'<r>{properties}<t xml:space="preserve">{escape(stored, source)}</t></r>', stored, known)
    return whole


class Sheet:
    def __init__(self, source):
        self.source, self.shared, self.markup, self.cells, self.sheets = source, [], '', [], []
        self.fonts = [source.choose('Calibri', source.font()), 'Arial'] + [source.font() for _ in range(5)]

    def share(self, markup):
        self.shared.append(f'<si>{markup}</si>')
        return len(self.shared) - 1

    def cell(self, style, attributes, content, piece):
        row, column = divmod(len(self.cells), 4)
        if column == 0:
            self.markup += ('</row>' if row else '') + f'<row r="{row + 1}">'
        self.markup += f'<c r="{"ABCD"[column]}{row + 1}" s="{style}"{attributes}>{content}</c>'
        self.cells.append((piece.stored, piece.known))

    def plain_cells(self):
        style = self.source.random.randrange(len(self.fonts))
        stored, known = self.source.phrase(self.fonts[style])
        kind = self.source.choose('shared', 'inline', 'formula')
        text = escape(stored, self.source)
        if kind == 'shared':
            self.cell(style, ' t="s"', f'<v>{self.share(f"<t>{text}</t>")}</v>', Piece('', stored, known))
        elif kind == 'inline':
            self.cell(style, ' t="inlineStr"', f'<is><t>{text}</t></is>', Piece('', stored, known))
        else:
            self.cell(style, ' t="str"', f'<f>A1&amp;"x"</f><v>{text}</v>', Piece('', stored, known))

    def rich_cell(self):
        style = self.source.random.randrange(len(self.fonts))
        piece = rich(self.source, self.fonts[style])
        if self.source.often():
            self.cell(style, ' t="s"', f'<v>{self.share(piece.markup)}</v>', piece)
        else:
            self.cell(style, ' t="inlineStr"', f'<is>{piece.markup}</is>', piece)

    def one_text_in_two_fonts(self):
        """The same bytes are Lao in one cell and Latin in the other."""
        style = self.source.choose(2, 3, 4)
        stored, known = self.source.phrase(self.fonts[style])
        number = self.share(f'<t>{escape(stored)}</t>')
        first = [(style, known), (1, stored)]
        self.source.random.shuffle(first)
        for style, known in first + first[:1]:
            self.cell(style, ' t="s"', f'<v>{number}</v>', Piece('', stored, known))

    def number(self):
        self.cell(2, '', '<v>1234.5</v>', Piece('', '1234.5'))

    def header(self):
        """Codes of fonts stand in the text itself."""
        font = self.source.font()
        while code_of(font) == 'alice':  # & is a letter there and begins a code here
            font = self.source.font()
        stored, known = self.source.phrase(font, '&"')
        stored, known = stored.replace('&', ''), known.replace('&', '')
        latin = 'Page &P of &N'
        start = f'&L&"{font},Regular"&12 '
        unicode = f'&L&"{replacement(font)},Regular"&12 '
        text = f'{start}{stored}&C&"Arial,Bold"{latin}'
        return Piece(escape(text), text, f'{unicode}{known}&C&"Arial,Bold"{latin}')

    def finish(self):
        self.markup += '</row>' * bool(self.cells)
        header = self.header()
        sheet = Piece(inner=self.cells + [(header.stored, header.known)])
        sheet.markup = (f'{HEAD}<worksheet xmlns="{SPACE}" xmlns:r="{RELATIONS}"><sheetData>{self.markup}</sheetData><headerFooter><oddHeader>'
                        f'{header.markup}</oddHeader></headerFooter><drawing r:id="r1"/></worksheet>')
        self.markup, self.cells = '', []
        return sheet

    def style_sheet(self):
        fonts = ''.join(f'<font><sz val="11"/><name val="{font}"/><family val="2"/></font>' for font in self.fonts)
        own = ''.join(f'<xf numFmtId="0" fontId="{i}" fillId="0" borderId="0" xfId="0" applyFont="1"/>' for i in range(len(self.fonts)))
        return (f'{HEAD}<styleSheet xmlns="{SPACE}"><fonts count="{len(self.fonts)}">{fonts}</fonts><fills count="1"><fill><patternFill patternType="none"/></fill></fills>'
                f'<borders count="1"><border/></borders><cellStyleXfs count="1"><xf numFmtId="0" fontId="0" fillId="0" borderId="0"/></cellStyleXfs>'
                f'<cellXfs count="{len(self.fonts)}">{own}</cellXfs><cellStyles count="1"><cellStyle name="Normal" xfId="0" builtinId="0"/></cellStyles></styleSheet>')

    def comments(self):
        rows = joined(rich(self.source, 'Tahoma').as_paragraph(f'<comment ref="A{i}" authorId="0"><text>', '</text></comment>') for i in (1, 2))
        return rows.within(f'{HEAD}<comments xmlns="{SPACE}"><authors><author>A</author></authors><commentList>', '</commentList></comments>')

    def drawing(self):
        font = self.source.font()
        stored, known = self.source.phrase(font)
        text = Piece(f'<a:r><a:rPr><a:latin typeface="{font}"/></a:rPr><a:t>{escape(stored)}</a:t></a:r>', stored, known).as_paragraph('<a:p>', '</a:p>')
        return text.within(f'{HEAD}<xdr:wsDr xmlns:xdr="{DRAWING}spreadsheetDrawing" xmlns:a="{DRAWING}main"><xdr:absoluteAnchor><xdr:pos x="0" y="0"/>'
                           '<xdr:ext cx="9" cy="9"/><xdr:sp macro="" textlink=""><xdr:nvSpPr><xdr:cNvPr id="2" name="T"/><xdr:cNvSpPr/></xdr:nvSpPr>'
                           '<xdr:spPr/><xdr:txBody><a:bodyPr/><a:lstStyle/>', '</xdr:txBody></xdr:sp><xdr:clientData/></xdr:absoluteAnchor></xdr:wsDr>')


def make_xlsx(source):
    sheet = Sheet(source)
    known = {}
    for number in (1, 2):
        for _ in range(6):
            source.choose(sheet.plain_cells, sheet.plain_cells, sheet.rich_cell, sheet.one_text_in_two_fonts, sheet.number)()
        sheet.one_text_in_two_fonts()
        known[f'xl/worksheets/sheet{number}.xml'] = sheet.finish()
    known['xl/comments1.xml'] = sheet.comments()
    known['xl/drawings/drawing1.xml'] = sheet.drawing()
    strings = f'{HEAD}<sst xmlns="{SPACE}" count="{2 * len(sheet.shared)}" uniqueCount="{len(sheet.shared)}">{"".join(sheet.shared)}</sst>'
    kinds = {'xl/workbook.xml': 'sheet.main', 'xl/worksheets/sheet1.xml': 'worksheet', 'xl/worksheets/sheet2.xml': 'worksheet',
             'xl/sharedStrings.xml': 'sharedStrings', 'xl/styles.xml': 'styles', 'xl/comments1.xml': 'comments'}
    types = {name: f'{MIME}spreadsheetml.{kind}+xml' for name, kind in kinds.items()}
    types['xl/drawings/drawing1.xml'] = MIME + 'drawing+xml'
    parts = {'[Content_Types].xml': content_types(types), '_rels/.rels': relations([('r1', 'officeDocument', 'xl/workbook.xml'), ('r2', 'extended-properties', 'docProps/app.xml')]),
             'docProps/app.xml': f'{HEAD}<Properties xmlns="http://schemas.openxmlformats.org/officeDocument/2006/extended-properties">'
             '<Application>Microsoft Excel</Application></Properties>',
             'xl/workbook.xml': f'{HEAD}<workbook xmlns="{SPACE}" xmlns:r="{RELATIONS}"><sheets><sheet name="S1" sheetId="1" r:id="r1"/>'
             '<sheet name="S2" sheetId="2" r:id="r2"/></sheets></workbook>',
             'xl/_rels/workbook.xml.rels': relations([('r1', 'worksheet', 'worksheets/sheet1.xml'), ('r2', 'worksheet', 'worksheets/sheet2.xml'),
                                                      ('r3', 'sharedStrings', 'sharedStrings.xml'), ('r4', 'styles', 'styles.xml')]),
             **{name: piece.markup for name, piece in known.items()}, 'xl/styles.xml': sheet.style_sheet(), 'xl/sharedStrings.xml': strings,
             'xl/worksheets/_rels/sheet1.xml.rels': relations([('r1', 'drawing', '../drawings/drawing1.xml'), ('r2', 'comments', '../comments1.xml')]),
             'xl/worksheets/_rels/sheet2.xml.rels': relations([('r1', 'drawing', '../drawings/drawing1.xml')])}
    return package(parts, source), known
