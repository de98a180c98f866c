"""Documents that nobody means well with: damaged, lying about their sizes, deep, endless. Each of them ends in a message and exit
status 1, and the old destination stays; or in a document. Never in a crash, and never in much memory or time."""
import io, re, struct, subprocess, sys, warnings, zipfile, zlib
from pathlib import Path
from pieces import Source
from readers import READERS
from word import MIME, SPACES, content_types, relations

warnings.filterwarnings('ignore', 'Duplicate name')  # meant
MEGABYTES, SECONDS = 200, 30
SANITIZED_SECONDS = 120
W = f'xmlns:w="{SPACES["w"]}"'
RUN = '<w:p><w:r><w:rPr><w:rFonts w:ascii="Saysettha Lao" w:hAnsi="Saysettha Lao"/></w:rPr><w:t>{}</w:t></w:r></w:p>'
STYLE = '<w:style w:type="paragraph" w:styleId="{}"><w:basedOn w:val="{}"/></w:style>'
STYLED = '<w:p><w:pPr><w:pStyle w:val="{}"/></w:pPr><w:r><w:t>\u00a1</w:t></w:r></w:p>'


def word_body(inside):
    return f'<w:document {W}><w:body>{inside}</w:body></w:document>'


def docx_parts(document, styles=''):
    kinds = {'word/document.xml': f'{MIME}wordprocessingml.document.main+xml', 'word/styles.xml': f'{MIME}wordprocessingml.styles+xml'}
    return {'[Content_Types].xml': content_types(kinds), '_rels/.rels': relations([('r1', 'officeDocument', 'word/document.xml')]),
            'word/_rels/document.xml.rels': relations([('r1', 'styles', 'styles.xml')]), 'word/document.xml': document,
            'word/styles.xml': f'<w:styles {W}>{styles}</w:styles>'}


def zipped(parts):
    stream = io.BytesIO()
    with zipfile.ZipFile(stream, 'w', zipfile.ZIP_DEFLATED) as archive:
        for name, content in parts.items() if isinstance(parts, dict) else parts:
            archive.writestr(zipfile.ZipInfo(name), content, zipfile.ZIP_DEFLATED)
    return stream.getvalue()


def docx(inside, styles=''):
    return zipped(docx_parts(inside if isinstance(inside, bytes) else word_body(inside), styles))


def bomb(size, told, crc=0):
    """A package whose document is `size` bytes of blanks and says it has `told` bytes."""
    squeeze = zlib.compressobj(9, zlib.DEFLATED, -15)
    head = squeeze.compress(b'<w:document>') + squeeze.flush(zlib.Z_FULL_FLUSH)
    block = squeeze.compress(b' ' * 1000000) + squeeze.flush(zlib.Z_FULL_FLUSH)
    data = head + block * (size // 1000000) + zlib.compressobj(9, zlib.DEFLATED, -15).flush()
    archive = zipped({**docx_parts(word_body(RUN.format('\u00a1'))), 'word/document.xml': ''})
    return with_data(archive, 'word/document.xml', data, told, crc)


def with_data(archive, name, data, told, crc):
    """The package with other packed data in a part, and what it says of it."""
    result, rows = b'', []
    with zipfile.ZipFile(io.BytesIO(archive)) as source:
        for info in source.infolist():
            start = info.header_offset + 30 + len(info.filename)
            packed, size, check = archive[start:start + info.compress_size], info.file_size, info.CRC
            if info.filename == name:
                packed, size, check = data, told, crc
            zip64 = size >= 0xFFFFFFFF
            extra = struct.pack('<HHQQ', 1, 16, size, len(packed)) if zip64 else b''
            sizes = (0xFFFFFFFF, 0xFFFFFFFF) if zip64 else (len(packed), size)
            about = struct.pack('<HHHHHIIIHH', 45, 0, 8, 0, 33, check, *sizes, len(info.filename), len(extra))
            rows.append(b'PK\1\2' + struct.pack('<H', 45) + about + struct.pack('<HHHII', 0, 0, 0, 0, len(result)) + info.filename.encode() + extra)
            result += b'PK\3\4' + about + info.filename.encode() + extra + packed
    directory = b''.join(rows)
    return result + directory + b'PK\5\6' + struct.pack('<HHHHIIH', 0, 0, len(rows), len(rows), len(directory), len(result), 0)


def pointed(archive, targets):
    """Entries of the directory that have the data of others."""
    data = bytearray(archive)
    offsets, at = {}, data.rindex(b'PK\5\6')
    at = struct.unpack_from('<I', data, at + 16)[0]
    while data[at:at + 4] == b'PK\1\2':
        name, extra, comment = struct.unpack_from('<HHH', data, at + 28)
        offsets[data[at + 46:at + 46 + name].decode()] = at
        at += 46 + name + extra + comment
    for name, other in targets.items():
        for first, size in ((16, 12), (42, 4)):  # check sum and sizes; place
            data[offsets[name] + first:offsets[name] + first + size] = data[offsets[other] + first:offsets[other] + first + size]
    return bytes(data)


def flagged(archive, bit):
    data = bytearray(archive)
    for signature, place in ((b'PK\3\4', 6), (b'PK\1\2', 8)):
        at = data.find(signature)
        while at >= 0:
            data[at + place] |= bit
            at = data.find(signature, at + 4)
    return bytes(data)


def ole():
    names = ''.join(name.ljust(32, '\0') for name in ('Root Entry', 'EncryptionInfo', 'EncryptedPackage'))
    return b'\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1' + bytes(504) + names.encode('utf-16-le') + bytes(4096)


def packages():
    good = docx(RUN.format('¡¾'))
    yield 'bomb of 10 GB', 'docx', bomb(10 ** 10, 10 ** 10)
    yield 'bomb of 10 GB that says 1 kB', 'docx', bomb(10 ** 10, 1000)
    yield 'bomb of 1 GB', 'docx', bomb(10 ** 9, 12 + 10 ** 9)
    same = zipped([*docx_parts(word_body(RUN.format('¡'))).items(), *((f'word/media/{i}', ' ' * 1000000) for i in range(200))])
    yield 'overlapping parts', 'docx', pointed(same, {f'word/media/{i}': 'word/media/0' for i in range(200)})
    yield 'two names of one part', 'docx', pointed(same, {'word/styles.xml': 'word/document.xml'})
    for name in ('../../x.xml', '/x.xml', 'C:\\x.xml', 'word/../../../x.xml', '..\\..\\x.xml', '', 'word/\udcff.xml'.encode('utf8', 'replace').decode()):
        yield f'name {name!r}', 'docx', zipped([*docx_parts(word_body(RUN.format('¡'))).items(), (name, RUN)])
    yield 'one name twice', 'docx', zipped([*docx_parts(word_body('')).items(), ('word/document.xml', word_body(RUN.format('¡')))])
    yield '50,000 parts', 'docx', zipped([*docx_parts(word_body(RUN.format('¡'))).items(), *((f'x/{i}', '') for i in range(50000))])
    yield 'encrypted part', 'docx', flagged(good, 1)
    yield 'unknown method', 'docx', good.replace(b'\x08\x00\x00\x00\x21', b'\x63\x00\x00\x00\x21')
    yield 'encrypted document', 'docx', ole()
    yield 'wrong check sum', 'docx', with_data(good, 'word/document.xml', zlib.compress(word_body('').encode())[2:-4], len(word_body('')), 1)
    yield 'rubbish in a part', 'docx', with_data(good, 'word/document.xml', bytes(range(256)) * 4, 5000, 1)
    yield 'no parts', 'docx', b'PK\5\6' + bytes(18)
    yield 'empty file', 'docx', b''
    for kind in ('docx', 'odt', 'xlsx', 'pptx', 'flat', 'word2003', 'fodt', 'html', 'rtf'):
        yield from truncated(kind)


def truncated(kind):
    from make_documents import FORMATS
    data = FORMATS[kind][2](Source(f'cut {kind}'))[0]
    for i in range(12):
        yield f'cut after {i}/12', kind, data[:len(data) * i // 12 + i]
    yield 'cut by a byte', kind, data[:-1]


def xml():
    laughs = '<!DOCTYPE w [<!ENTITY a "{}">{}]>'.format('ha' * 50, ''.join(f'<!ENTITY {chr(98 + i)} "{f"&{chr(97 + i)};" * 10}">' for i in range(12)))
    for name, text in {
        'entities': laughs + word_body(RUN.format('&m;')), 'entity of a file': '<!DOCTYPE w [<!ENTITY a SYSTEM "file:///etc/passwd">]>' + word_body(RUN.format('&a;')),
        'deep': word_body('<w:sdt>' * 1000000 + RUN.format('¡') + '</w:sdt>' * 1000000), 'deep and open': word_body('<w:sdt>' * 1000000),
        'long tag': word_body(f'<w:p {"a" * 30000000}="1"/>'), 'long value': word_body(f'<w:p a="{"b" * 30000000}"/>'),
        'many attributes': word_body('<w:p ' + ' '.join(f'a{i}=""' for i in range(200000)) + '/>'),
        'paragraph in a level': word_body('<w:lvl><w:lvlText w:val="¡"/>' + RUN.format('¡') + '</w:lvl>'),
        'NUL': word_body(RUN.format('¡\0¢')), 'half a pair': word_body(RUN.format('¡&#xD800;')), 'large reference': word_body(RUN.format('&#x110000;&#99999999999999999999;')),
        'NUL by reference': word_body(RUN.format('&#0;&#x0;&#;&#x;&;')), 'open reference': word_body(RUN.format('¡&#16')), 'open CDATA': word_body(RUN.format('<![CDATA[¡'))[:-60],
        'open comment': word_body(RUN.format('<!-- ¡')), 'wrong end': word_body(RUN.format('¡</w:x>')), 'no end': word_body('')[:-25], 'open value': word_body('<w:p a="'),
        'no tag': 'text', 'UTF-16': word_body(RUN.format('¡¢')).encode('utf-16'), 'two roots': word_body('') * 2, 'bare &': word_body(RUN.format('¡ & ¢')),
        'bytes that are no UTF-8': word_body(RUN.format('¡')).encode('latin-1'), 'surrogate': word_body(RUN.format('¡X')).encode().replace(b'X', b'\xED\xA0\x80'),
        'long form': word_body(RUN.format('¡X')).encode().replace(b'X', b'\xC0\xBC'), 'end inside a character': word_body(RUN.format('¡')).encode()[:-60] + b'\xE0'}.items():
        data = text if isinstance(text, bytes) else text.encode('utf8')
        yield name, 'docx', docx(data)
        yield name, 'word2003', data.replace(SPACES['w'].encode(), b'http://schemas.microsoft.com/office/word/2003/wordml').replace(b'w:document ', b'w:wordDocument ').replace(b'/w:document>', b'/w:wordDocument>')


def styles():
    ring = ''.join(STYLE.format(i, (i + 1) % 1000) for i in range(1000))
    yield 'ring of styles', 'docx', docx(''.join(STYLED.format(i) for i in range(1000)), ring)
    yield 'its own base', 'docx', docx(STYLED.format('a'), STYLE.format('a', 'a'))
    chain = ''.join(STYLE.format(i, i + 1) for i in range(20000))
    yield 'long chain', 'docx', docx(''.join(STYLED.format(i) for i in range(20000)), chain)
    yield '100,000 styles', 'docx', docx(STYLED.format(7), ''.join(STYLE.format(i, 'x') for i in range(100000)))
    yield 'long name', 'docx', docx(STYLED.format('s' * 1000000), STYLE.format('s' * 1000000, 'x'))
    long_font = RUN.format('¡').replace('Saysettha Lao', 'F' * 1000000)
    yield 'long font', 'docx', docx(long_font)
    yield '100,000 fonts', 'docx', docx(''.join(RUN.format('a').replace('Saysettha Lao', f'F{i}') for i in range(100000)))
    yield '1,000,000 marks', 'docx', docx(RUN.format('¡' + 'È' * 1000000))
    run = RUN[len('<w:p>'):-len('</w:p>')]
    yield 'blanks at the ends of a long paragraph', 'docx', docx('<w:p>' + run.format('¡&#32;') * 20000 + '</w:p>')
    yield 'paragraph of 100 MB', 'docx', docx('<w:p>' + run.format('¡') + f'<w:x a="{"b" * 10000}"/>' * 10000 + '</w:p>')
    yield '300,000 runs in a paragraph', 'docx', docx('<w:p>' + '<w:r><w:rPr><w:rFonts w:hAnsi="Saysettha Lao"/></w:rPr><w:t>È</w:t></w:r>' * 300000 + '</w:p>')


def others():
    for name, text in {
        'deep': '{' * 1000000 + '}' * 1000000, 'deep and open': '{\\rtf1' + '{' * 1000000, 'too many ends': '{\\rtf1}' + '}' * 1000, 'long \\bin': '{\\rtf1\\bin99999999999 x}',
        '\\bin below 0': '{\\rtf1\\bin-5 x}', 'large numbers': "{\\rtf1\\uc999999999\\f99999999999\\u99999999999999 \\'a1\\u-99999 x}", 'open \\\'': "{\\rtf1\\'", 'open \\\' 2': "{\\rtf1\\'a",
        'no hex': "{\\rtf1\\'zz}", 'open word': '{\\rtf1\\', 'long word': '{\\rtf1\\' + 'a' * 10000000 + '}', 'NUL': '{\\rtf1 \0\\f1\0}',
        '200,000 fonts': '{\\rtf1{\\fonttbl' + ''.join(f'{{\\f{i} Saysettha Lao;}}' for i in range(200000)) + "}\\f7 \\'a1}", 'open font table': '{\\rtf1{\\fonttbl{\\f0 Saysettha Lao',
        'half a pair': '{\\rtf1{\\fonttbl{\\f0 Saysettha Lao;}}\\f0\\u-10240 ?x}'}.items():
        yield name, 'rtf', text.encode()
    for name, text in {
        'deep': '<html>' + '<div>' * 1000000, 'deep fonts': '<html>' + '<font face="Saysettha Lao">' * 300000 + '¡', 'open tag': '<html><font face="Saysettha Lao', 'open comment': '<html><!-- ¡',
        'open script': '<html><script>', 'open style': '<html><style>p{font-family:', 'long tag': '<html><p ' + 'a' * 30000000, 'NUL': '<html>\0<p>\0', 'ends that are open': '<html>' + '</font>' * 100000,
        'family without a name': '<html><style>p{font-family:Saysettha Lao;font-family: }</style><p>¡<p style="font-family:Saysettha Lao;font-family: ,">¡',
        'large reference': '<html><font face="Saysettha Lao">&#99999999999999999999;&#xD800;&#0;&;&#;', 'many rules': '<html><style>' + ''.join(f'.c{i}{{font-family:F{i}}}' for i in range(50000)) +
        '</style>' + '<p class="c7">' * 50000}.items():
        yield name, 'html', text.encode('utf8')
    for kind, deep in (('fodt', '<text:span>'), ('fodt', '<text:list>')):
        head = '<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" office:mimetype="application/vnd.oasis.opendocument.text"><office:body><office:text><text:p>'
        yield 'deep ' + deep, kind, (head + deep * 1000000 + '¡').encode('utf8')
    from make_documents import FORMATS
    sheet = FORMATS['xlsx'][2](Source('hostile'))[0]
    for name, old, new in (('cell of no text', '<v>0</v>', '<v>4294967295</v>'), ('text below 0', '<v>1</v>', '<v>-1</v>'), ('no style', ' s="2"', ' s="99999999999"'),
                           ('style below 0', ' s="3"', ' s="-7"'), ('no font', 'fontId="3"', 'fontId="77777777777"')):
        with zipfile.ZipFile(io.BytesIO(sheet)) as archive:
            yield name, 'xlsx', zipped({part: archive.read(part).replace(old.encode(), new.encode()) for part in archive.namelist()})


# What a process took counts from its fork on: so a small one starts it.
RUNNER = '''
import resource, subprocess, sys
try:
    done = subprocess.run(sys.argv[2:], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, timeout=int(sys.argv[1]))
    status = done.returncode
except subprocess.TimeoutExpired:
    status = "late"
print(status, resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024)
'''


def run_bounded(seconds, command):
    """(exit status or 'late', standard error, megabytes)"""
    done = subprocess.run([sys.executable, '-S', '-E', '-c', RUNNER, str(seconds), *map(str, command)], capture_output=True)
    status, megabytes = done.stdout.decode().split()
    return status if status == 'late' else int(status), done.stderr.decode('utf8', 'replace'), int(megabytes)


def check_hostile(orvel, folder, not_yet, fail):
    folder.mkdir(parents=True)
    is_sanitized = b'__asan_init' in Path(orvel).read_bytes()  # its memory is another matter, and it takes ten times as long
    seconds = SANITIZED_SECONDS if is_sanitized else SECONDS
    count = 0
    for make in (packages, xml, styles, others):
        for name, kind, data in make():
            if kind in not_yet or (is_sanitized and re.search('10 GB|100 MB', name)):  # a bomb of 1 GB goes the same way
                continue
            count += 1
            suffix = {'flat': 'xml', 'word2003': 'xml'}.get(kind, kind)
            source, destination = folder / f'hostile.{suffix}', folder / f'new.{suffix}'
            source.write_bytes(data)
            destination.write_text('old')
            status, errors, megabytes = run_bounded(seconds, [orvel, 'convert', source, destination])
            label = Path(f'{kind}: {name}'.replace('/', '|'))
            if status == 'late':
                fail(label, f'takes more than {seconds} s')
            elif status not in (0, 1):
                fail(label, f'exit status {status}', errors[:500])
            elif status == 1 and (not errors.strip() or destination.read_text('latin-1') != 'old'):
                fail(label, 'no message' if not errors.strip() else 'the old document is gone')
            if megabytes > MEGABYTES and not is_sanitized:
                fail(label, f'takes {megabytes} MB')
            if status == 0:
                check_result(label, source, destination, fail)
            source.unlink()
            destination.unlink(missing_ok=True)
            for path in folder.iterdir():
                fail(label, f'left behind: {path.name}')
                path.unlink()
    return count


def check_result(label, source, destination, fail):
    """A new document can be read where the old one could."""
    if source.stat().st_size > 2000000 or destination.read_bytes() == source.read_bytes():
        return
    try:
        READERS[source.suffix[1:]](source.read_bytes())
    except Exception:  # whatever is wrong with it, it was before
        return
    try:
        READERS[source.suffix[1:]](destination.read_bytes())
    except Exception as error:
        fail(label, f'the new document is not readable: {error!r}')
