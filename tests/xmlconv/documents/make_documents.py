#!/usr/bin/env python3
"""make_documents.py FOLDER: writes NAME.fodt for each document of this folder into FOLDER; with them exported to NAME.xml
there, NAME.txt beside it: the known text of each w:t, a line each. README.md tells the rest."""
import re, sys
from html import escape
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parents[1] / 'documents'))
from legacy_fonts import put_in_font  # noqa: E402

LINES = (HERE / '../../corpus/udhr.txt').read_text(encoding='utf8').splitlines()


class Document:
    def __init__(self):
        self.body, self.known, self.notes = '', {}, 0

    def run(self, line, font, style=''):
        """A piece of text of a paragraph: in the font that its place gives it, or in that of a style of its own."""
        known = LINES[line] if isinstance(line, int) else line
        known = ' '.join(known.replace('"', '').split())
        # The letters of an entity would be Lao ones.
        stored = put_in_font(known, font, avoid='&<>' if font.startswith('alice_') else '')
        self.known[stored] = known
        text = escape(stored, quote=False)
        return f'<text:span text:style-name="{style}">{text}</text:span>' if style else text

    def note(self, content, style, kind='footnote'):
        self.notes += 1
        return (f'<text:note text:id="n{self.notes}" text:note-class="{kind}"><text:note-citation>{self.notes}</text:note-citation>'
                f'<text:note-body><text:p text:style-name="{style}">{content}</text:p></text:note-body></text:note>')

    def put(self, style, *runs, tag='p', level=''):
        self.body += f'<text:{tag} text:style-name="{style}"{level}>{"".join(runs)}</text:{tag}>\n'


def style(name, family='paragraph', font='', parent='', extra=''):
    fonts = f'<style:text-properties style:font-name="{font}"{extra}/>' if font or extra else ''
    base = f' style:parent-style-name="{parent}"' if parent else ''
    return f'<style:style style:name="{name}" style:family="{family}"{base}>{fonts}</style:style>\n'


def letter():
    """The default style's font is a legacy one; the rest differs by direct formatting."""
    d = Document()
    d.put('Standard', d.run(0, 'Saysettha Lao'))
    d.put('Standard', d.run(2, 'Saysettha Lao'))
    d.put('Standard', d.run(3, 'Saysettha Lao'), d.run('Universal Declaration & more <1948>', 'Times New Roman', 'Times'),
          d.run(4, 'Saysettha 2000', 'S2000'))
    d.put('ByHand', d.run(5, 'Saysettha 95'), '<text:line-break/>', d.run(6, 'Saysettha 95'))
    d.put('Standard', d.run(9, 'alice_0', 'Alice'), '<text:tab/>', d.run('ຂໍ້ 7-9 & \u0ebb\u0ec9', 'Saysettha Lao'))
    d.put('Standard', d.run('ມາດຕາ\u00a01: ກ\u200bຂ', 'Saysettha Lao'))
    styles = (style('Standard', font='Saysettha Lao'))
    automatic = (style('Times', 'text', 'Times New Roman') + style('S2000', 'text', 'Saysettha 2000') +
                 style('Alice', 'text', 'alice_0') + style('ByHand', font='Saysettha 95', parent='Standard'))
    return d, styles, automatic, '', ''


def report():
    """Headings, lists, a table, notes, header and footer, by styles that are based on styles."""
    d = Document()
    d.put('Title', d.run(0, 'Alice0 95'))
    d.put('Heading_20_1', d.run(1, 'Saysettha 2000'), tag='h', level=' text:outline-level="1"')
    d.put('Text_20_body', d.run(2, 'Saysettha Lao'), d.note(d.run(10, 'Alice1 Lao'), 'Footnote'), d.run(3, 'Saysettha Lao'))
    d.put('Quotation', d.run(4, 'Saysettha Lao'), d.run(11, 'alice_1', 'Emphasis'), d.run(12, 'alice_1', 'Strong'))
    d.put('Heading_20_2', d.run(13, 'Saysettha 2000'), tag='h', level=' text:outline-level="2"')
    d.body += '<text:list text:style-name="L1">'
    for line in (14, 15):
        d.body += '<text:list-item>'
        d.put('List', d.run(line, 'Saysettha Lao'))
        d.body += '</text:list-item>'
    d.body += '</text:list>\n<table:table table:name="T"><table:table-column table:number-columns-repeated="2"/>\n'
    for row in (16, 18):
        d.body += '<table:table-row>'
        for line, cell_style, font in ((row, 'Cell', 'VangVieng 2000'), (row + 1, 'Text_20_body', 'Saysettha Lao')):
            d.body += '<table:table-cell office:value-type="string">'
            d.put(cell_style, d.run(line, font))
            d.body += '</table:table-cell>'
        d.body += '</table:table-row>\n'
    d.body += '</table:table>\n'
    d.put('Text_20_body', d.run(20, 'Saysettha Lao'), d.note(d.run(21, 'Alice1 Lao'), 'Footnote', 'endnote'))
    d.put('Text_20_body', d.run(22, 'Saysettha Lao'), '<office:annotation><dc:creator>A</dc:creator><text:p>',
          d.run('Check & see', 'Times New Roman'), '</text:p></office:annotation>', d.run(23, 'Alice5 Lao', 'Own'))
    d.put('Text_20_body', d.run(24, 'Saysettha Lao'))
    styles = (style('Standard', font='Times New Roman') + style('Base', font='Saysettha Lao', parent='Standard') +
              style('Text_20_body', parent='Base') + style('Quotation', parent='Text_20_body', extra=' fo:font-style="italic"') +
              style('Heading', font='Saysettha 2000', parent='Standard') + style('Heading_20_1', parent='Heading') +
              style('Heading_20_2', parent='Heading_20_1') + style('Title', font='Alice0 95', parent='Heading') +
              style('List', parent='Text_20_body') + style('Footnote', font='Alice1 Lao', parent='Standard') +
              style('Cell', font='VangVieng 2000', parent='Text_20_body') + style('Header', font='Bubble Lao', parent='Standard') +
              style('Footer', parent='Header') + style('Emphasis', 'text', 'alice_1') + style('Strong', 'text', parent='Emphasis',
                                                                                           extra=' fo:font-weight="bold"'))
    automatic = style('Own', 'text', 'Alice5 Lao') + (
        '<text:list-style style:name="L1"><text:list-level-style-number text:level="1" style:num-format="1" style:num-suffix=".">'
        '<style:text-properties style:font-name="Saysettha 95"/></text:list-level-style-number></text:list-style>')
    header = f'<text:p text:style-name="Header">{d.run(25, "Bubble Lao")}</text:p>'
    footer = f'<text:p text:style-name="Footer">{d.run("ໜ້າ ", "Bubble Lao")}<text:page-number>1</text:page-number></text:p>'
    return d, styles, automatic, f'<style:header>{header}</style:header>', f'<style:footer>{footer}</style:footer>'


SPACES = ''.join(f' xmlns:{n}="urn:oasis:names:tc:opendocument:xmlns:{u}:1.0"' for n, u in (
    ('office', 'office'), ('style', 'style'), ('text', 'text'), ('table', 'table'), ('fo', 'xsl-fo-compatible'),
    ('svg', 'svg-compatible'))) + ' xmlns:dc="http://purl.org/dc/elements/1.1/"'


def flat_document(d, styles, automatic, header, footer):
    fonts = sorted(set(re.findall(r'style:font-name="([^"]+)"', styles + automatic)))
    faces = ''.join(f'<style:font-face style:name="{f}" svg:font-family="&apos;{f}&apos;"/>' for f in fonts)
    return (f'<?xml version="1.0" encoding="UTF-8"?>\n<office:document{SPACES} office:version="1.2" '
            f'office:mimetype="application/vnd.oasis.opendocument.text"><office:font-face-decls>{faces}</office:font-face-decls>\n'
            f'<office:styles>{styles}</office:styles>\n<office:automatic-styles>{automatic}<style:page-layout style:name="P"/>'
            f'</office:automatic-styles>\n<office:master-styles><style:master-page style:name="Standard" '
            f'style:page-layout-name="P">{header}{footer}</style:master-page></office:master-styles>\n'
            f'<office:body><office:text>\n{d.body}</office:text></office:body></office:document>\n')


def main():
    folder = Path(sys.argv[1])
    for make in (letter, report):
        d, *rest = make()
        (folder / f'{make.__name__}.fodt').write_text(flat_document(d, *rest), encoding='utf8')
        exported = folder / f'{make.__name__}.xml'
        if exported.exists():
            texts = re.findall(r'<w:t(?: [^>]*)?>([^<]*)</w:t>', exported.read_text(encoding='utf8'))
            known = {escape(stored, quote=False): escape(text, quote=False) for stored, text in d.known.items()}
            for text in set(texts) - set(known) - {'1'}:  # the page's number
                sys.exit(f'{make.__name__}: not as written: {text!r}')
            (folder / f'{make.__name__}.txt').write_text(''.join(known.get(t, t) + '\n' for t in texts), encoding='utf8')


main()
