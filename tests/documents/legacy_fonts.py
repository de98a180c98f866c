"""The legacy Lao fonts of the built-in font map, and known text put into their codes by the charts that a person reads."""
import re
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
CHARTS = (ROOT / 'bench/documents/document_charts.h').read_text(encoding='utf8')


def read_chart(name, first):
    body = CHARTS[CHARTS.index(name):].split('};')[0]
    signs = re.findall(r'"((?:[^"\\]|\\.)*)",', body)
    return {first + i: re.sub(r'\\u(....)', lambda m: chr(int(m[1], 16)), sign).replace('\\"', '"').replace('\\\\', '\\')
            for i, sign in enumerate(signs) if sign}


ASCII = {c: chr(c) for c in range(0x20, 0x7F)}
LAO = {**ASCII, **read_chart('kLaoSigns', 0x80)}
CODES = {'Lao': {**LAO, 0x2D: '\u200b', 0x8C: '-'}, '95': LAO, '2000': {**ASCII, **read_chart('kSignsOf2000', 0x80)},
         'alice': {**read_chart('kSignsAtLetters', 0x20), 0xA0: '\xa0'}}
CODE_OF_TYPE = ('Lao', '95', '2000', 'alice', '95', '95')

# Legacy font: its code, and the font that takes its place.
FONTS = {name: (CODE_OF_TYPE[int(kind)], unicode) for name, kind, unicode in re.findall(
    r'\{"([^"]+)",\s*(\d),\s*"([^"]+)"\}', (ROOT / 'src/xmlconv/font_map_table.h').read_text(encoding='utf8'))}


def code_of(font):
    return FONTS[font][0] if font in FONTS else None


def replacement(font):
    return FONTS[font][1] if font in FONTS else font


def character_of(byte):
    try:
        return bytes([byte]).decode('cp1252')
    except UnicodeDecodeError:  # the five bytes without a character keep their value
        return chr(byte)


def byte_of(character):
    try:
        return character.encode('cp1252')[0]
    except UnicodeEncodeError:
        return ord(character)


def store(text, font, avoid=''):
    """The characters that a word processor holds, and the text that they show: the signs of it that the font has."""
    bytes_of, stored, known = {}, '', ''
    for byte, sign in CODES[code_of(font)].items():
        if chr(byte) not in avoid:
            bytes_of.setdefault(sign, byte)
    while text:
        size = 2 if text[:2] in bytes_of and len(text) > 1 else 1
        if text[:size] in bytes_of:
            stored += character_of(bytes_of[text[:size]])
            known += text[:size]
        text = text[size:]
    return stored, known


def put_in_font(text, font, avoid=''):
    """The characters that a word processor holds; all signs of the text have to be in the font."""
    if not code_of(font):
        return text
    stored, known = store(text, font, avoid)
    assert known == text, f'{font} has not all signs of {text!r}'
    return stored


def shown(stored, font):
    """The text that stored characters show in a font; one of today shows them as they are."""
    return stored if font not in FONTS else ''.join(CODES[code_of(font)][byte_of(c)] for c in stored)
