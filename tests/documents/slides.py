"""Presentations, .pptx: text takes its font from the run, its shape, the placeholders of layout and master, or the theme."""
from legacy_fonts import byte_of, shown
from pieces import Piece, escape, joined, package, picture
from word import MIME, RELATIONS, content_types, relations

SPACES = (' xmlns:a="http://schemas.openxmlformats.org/drawingml/2006/main" xmlns:p="http://schemas.openxmlformats.org/presentationml/2006/main"'
          f' xmlns:r="{RELATIONS}" xmlns:c="http://schemas.openxmlformats.org/drawingml/2006/chart"')
HEAD = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'


class Slides:
    """fonts[place][level]: what a place says of the fonts of levels, None: nothing. Places of a text are asked in order."""

    def __init__(self, source):
        self.source = source
        font, choose = source.font, source.choose
        self.theme = {'+mn-lt': choose(font(), 'Calibri'), '+mj-lt': choose(font(), 'Cambria')}
        some = lambda *more: [choose(None, font(), 'Arial', *more) for _ in range(2)]  # noqa: E731
        self.fonts = {'shape': some(), 'layout title': some(), 'layout body': some(), 'master title': some(), 'master body': some(),
                      'title style': some('+mj-lt'), 'body style': some('+mn-lt'), 'other style': some('+mn-lt'), 'defaults': some('+mn-lt'),
                      'notes style': some('+mn-lt'), 'none': [None, None]}

    def resolve(self, places, level):
        for place in places:
            font = self.fonts[place][level]
            if font:
                return self.theme.get(font, font)
        return self.theme['+mn-lt']

    def latin(self, font):
        names = [name for name, value in self.theme.items() if value == font]
        face = names[0] if names and self.source.often() else self.source.spelled(font)
        others = self.source.choose('', '<a:cs typeface="Arial"/>', f'<a:ea typeface="{font}"/><a:cs typeface="{font}"/>', f'<a:cs typeface="{self.source.font()}"/>')
        return f'<a:latin typeface="{face}"/>{others}'

    def levels(self, place, tag):
        rows = ''.join(f'<a:lvl{i + 1}pPr><a:defRPr sz="1800">{self.latin(font) if not font.startswith("+") else f"<a:latin typeface={chr(34)}{font}{chr(34)}/>"}'
                       f'</a:defRPr></a:lvl{i + 1}pPr>' if font else f'<a:lvl{i + 1}pPr marL="0"/>' for i, font in enumerate(self.fonts[place]))
        return f'<{tag}>{rows}</{tag}>'

    def run(self, base):
        kind = self.source.choose('inherit', 'inherit', 'direct', 'latin', 'cut', 'unicode', 'symbols')
        font = base if kind in ('inherit', 'cut') else 'Arial' if kind == 'latin' else self.source.font()
        stored, known = self.source.phrase(font)
        properties = '<a:rPr lang="en-US"/>' if font == base else f'<a:rPr lang="en-US" sz="1200">{self.latin(font)}</a:rPr>'
        if kind == 'unicode':
            stored = known = 'ພາສາລາວ'
        if kind == 'symbols':
            stored = ''.join(chr(0xF000 + byte_of(c)) for c in stored)
        if kind != 'cut':
            return Piece(f'<a:r>{properties}<a:t>{escape(stored, self.source)}</a:t></a:r>', stored, known)
        whole, cut = Piece(), self.source.random.randrange(len(stored) + 1)
        for part in (stored[:cut], stored[cut:]):
            whole += Piece(f'<a:r>{properties}<a:t>{escape(part)}</a:t></a:r>', part, shown(part, font))
        return whole

    def paragraph(self, places):
        level = self.source.choose(0, 0, 1)
        base = self.resolve(places, level)
        runs = joined(self.run(base) for _ in range(self.source.random.randint(1, 3)))
        if self.source.often(0.3):
            runs += Piece('<a:br/>', '\n') + self.run(base)
        lvl = f' lvl="{level}"' if level else ''
        return runs.as_paragraph(f'<a:p><a:pPr{lvl}/>', f'<a:endParaRPr>{self.latin(self.source.font())}</a:endParaRPr></a:p>')

    def body(self, places, tag='p'):
        own = self.levels('shape', 'a:lstStyle') if 'shape' in places else '<a:lstStyle/>'
        return joined(self.paragraph(places) for _ in range(2)).within(f'<{tag}:txBody><a:bodyPr/>{own}', f'</{tag}:txBody>')

    def shape(self, kind, places):
        placeholder = {'title': '<p:ph type="title"/>', 'body': '<p:ph idx="1"/>', 'notes': '<p:ph type="body" idx="1"/>'}.get(kind, '')
        return self.body(places).within(f'<p:sp><p:nvSpPr><p:cNvPr id="2" name="S"/><p:cNvSpPr/><p:nvPr>{placeholder}</p:nvPr></p:nvSpPr>'
                                        '<p:spPr/>', '</p:sp>')

    def placeholder(self, kind, place):
        index = {'title': '<p:ph type="title"/>', 'body': '<p:ph type="body" idx="1"/>'}[kind]
        return (f'<p:sp><p:nvSpPr><p:cNvPr id="2" name="S"/><p:cNvSpPr/><p:nvPr>{index}</p:nvPr></p:nvSpPr><p:spPr/><p:txBody><a:bodyPr/>'
                f'{self.levels(place, "a:lstStyle")}<a:p><a:r><a:rPr/><a:t></a:t></a:r></a:p></p:txBody></p:sp>')

    def table(self):
        cell = lambda: self.body(('other style', 'defaults')[1:], 'a').within('<a:tc>', '<a:tcPr/></a:tc>')  # noqa: E731
        rows = joined((cell() + cell()).within('<a:tr h="1">', '</a:tr>') for _ in range(2))
        return rows.within('<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id="4" name="T"/><p:cNvGraphicFramePr/><p:nvPr/></p:nvGraphicFramePr>'
                           '<p:xfrm/><a:graphic><a:graphicData uri="http://schemas.openxmlformats.org/drawingml/2006/table"><a:tbl>'
                           '<a:tblGrid><a:gridCol w="1"/><a:gridCol w="1"/></a:tblGrid>', '</a:tbl></a:graphicData></a:graphic></p:graphicFrame>')

    def chart(self):
        """Titles of a chart: text with its own properties, and with the chart's."""
        font = self.source.font()
        title = self.source.font()
        own = Piece(*self.own_run(title)) + self.run(title)
        own = own.as_paragraph(f'<a:p><a:pPr><a:defRPr>{self.latin(title)}</a:defRPr></a:pPr>', '</a:p>')
        chart = own.within('<c:chart><c:title><c:tx><c:rich><a:bodyPr/><a:lstStyle/>', '</c:rich></c:tx></c:title><c:plotArea/></c:chart>')
        return chart.within(f'{HEAD}<c:chartSpace{SPACES}>', f'<c:txPr><a:bodyPr/><a:p><a:pPr><a:defRPr>{self.latin(font)}</a:defRPr></a:pPr></a:p></c:txPr></c:chartSpace>')

    def own_run(self, font):
        stored, known = self.source.phrase(font)
        return f'<a:r><a:rPr>{self.latin(font)}</a:rPr><a:t>{escape(stored)}</a:t></a:r>', stored, known


def tree(root, shapes, after=''):
    return shapes.within(f'{HEAD}<p:{root}{SPACES}><p:cSld><p:spTree><p:nvGrpSpPr><p:cNvPr id="1" name=""/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr>'
                         '<p:grpSpPr/>', f'</p:spTree></p:cSld>{after}</p:{root}>')


def make_pptx(source):
    slides = Slides(source)
    title = ('shape', 'layout title', 'master title', 'title style')
    body = ('shape', 'layout body', 'master body', 'body style')
    shapes = slides.shape('title', title) + slides.shape('body', body) + slides.shape('', ('shape', 'defaults')) + slides.table()
    known = {'ppt/slides/slide1.xml': tree('sld', shapes),
             'ppt/notesSlides/notesSlide1.xml': tree('notes', slides.shape('notes', ('shape', 'notes style'))),
             'ppt/charts/chart1.xml': slides.chart()}
    styles = ''.join(slides.levels(place, tag) for place, tag in (
        ('title style', 'p:titleStyle'), ('body style', 'p:bodyStyle'), ('other style', 'p:otherStyle')))
    masters = Piece(slides.placeholder('title', 'master title') + slides.placeholder('body', 'master body'))
    layouts = Piece(slides.placeholder('title', 'layout title') + slides.placeholder('body', 'layout body'))
    faces = {name: f'<a:latin typeface="{slides.theme[name]}"/><a:ea typeface=""/><a:cs typeface=""/>' for name in slides.theme}
    theme = (f'{HEAD}<a:theme{SPACES} name="T"><a:themeElements><a:fontScheme name="F"><a:majorFont>{faces["+mj-lt"]}</a:majorFont>'
             f'<a:minorFont>{faces["+mn-lt"]}</a:minorFont></a:fontScheme></a:themeElements></a:theme>')
    kinds = {'ppt/presentation.xml': 'presentationml.presentation.main', 'ppt/slides/slide1.xml': 'presentationml.slide',
             'ppt/notesSlides/notesSlide1.xml': 'presentationml.notesSlide', 'ppt/slideLayouts/slideLayout1.xml': 'presentationml.slideLayout',
             'ppt/slideMasters/slideMaster1.xml': 'presentationml.slideMaster', 'ppt/notesMasters/notesMaster1.xml': 'presentationml.notesMaster',
             'ppt/theme/theme1.xml': 'theme', 'ppt/charts/chart1.xml': 'drawingml.chart'}
    parts = {
        '[Content_Types].xml': content_types({name: f'{MIME}{kind}+xml' for name, kind in kinds.items()}),
        '_rels/.rels': relations([('r1', 'officeDocument', 'ppt/presentation.xml')]),
        'ppt/presentation.xml': f'{HEAD}<p:presentation{SPACES}><p:sldMasterIdLst><p:sldMasterId r:id="r1"/></p:sldMasterIdLst><p:notesMasterIdLst>'
        f'<p:notesMasterId r:id="r3"/></p:notesMasterIdLst><p:sldIdLst><p:sldId id="256" r:id="r2"/></p:sldIdLst>{slides.levels("defaults", "p:defaultTextStyle")}</p:presentation>',
        'ppt/_rels/presentation.xml.rels': relations([('r1', 'slideMaster', 'slideMasters/slideMaster1.xml'), ('r2', 'slide', 'slides/slide1.xml'),
                                                      ('r3', 'notesMaster', 'notesMasters/notesMaster1.xml'), ('r4', 'theme', 'theme/theme1.xml')]),
        **{name: piece.markup for name, piece in known.items()},
        'ppt/slides/_rels/slide1.xml.rels': relations([('r1', 'slideLayout', '../slideLayouts/slideLayout1.xml'), ('r2', 'chart', '../charts/chart1.xml'),
                                                       ('r3', 'notesSlide', '../notesSlides/notesSlide1.xml')]),
        'ppt/notesSlides/_rels/notesSlide1.xml.rels': relations([('r1', 'notesMaster', '../notesMasters/notesMaster1.xml'), ('r2', 'slide', '../slides/slide1.xml')]),
        'ppt/slideLayouts/slideLayout1.xml': tree('sldLayout', layouts).markup,
        'ppt/slideLayouts/_rels/slideLayout1.xml.rels': relations([('r1', 'slideMaster', '../slideMasters/slideMaster1.xml')]),
        'ppt/slideMasters/slideMaster1.xml': tree('sldMaster', masters, f'<p:sldLayoutIdLst><p:sldLayoutId id="2147483649" r:id="r1"/></p:sldLayoutIdLst><p:txStyles>{styles}</p:txStyles>').markup,
        'ppt/slideMasters/_rels/slideMaster1.xml.rels': relations([('r1', 'slideLayout', '../slideLayouts/slideLayout1.xml'), ('r2', 'theme', '../theme/theme1.xml')]),
        'ppt/notesMasters/notesMaster1.xml': tree('notesMaster', Piece(), slides.levels('notes style', 'p:notesStyle')).markup,
        'ppt/notesMasters/_rels/notesMaster1.xml.rels': relations([('r1', 'theme', '../theme/theme1.xml')]),
        'ppt/theme/theme1.xml': theme, 'ppt/media/image1.png': picture()}
    return package(parts, source), known
