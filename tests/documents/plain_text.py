"""Plain text and CSV in one legacy font, which the user names."""
from legacy_fonts import byte_of, code_of
from pieces import Piece, joined


def line(source, font, suffix):
    if suffix == 'txt':
        return Piece('', *source.phrase(font))
    fields = joined(Piece('', *source.phrase(font, ',')) + Piece('', ',') for _ in range(3))
    return fields + Piece('', '7')


def make_text(source, suffix):
    """(bytes, known text, font): as UTF-8, or the raw bytes of the font."""
    font = source.font()
    while suffix == 'csv' and code_of(font) == 'alice':  # a comma is a letter there
        font = source.font()
    end = source.choose('\r\n', '\n')
    lines = Piece()
    for _ in range(6):
        text = line(source, font, suffix)
        text.markup = text.stored
        lines += text.as_paragraph('', end)
    raw = source.often()
    return bytes(byte_of(c) for c in lines.markup) if raw else lines.markup.encode('utf8'), {'document': lines}, font
