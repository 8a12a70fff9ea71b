"""Reading .xlsx and .ods workbooks as openpyxl and odfpy write them.

Drives the spreadsheet layer through the xlstool helper and the command
line through vireon-cli:
    python3 test_workbook_agreement.py XLSTOOL VIREON_CLI EXAMPLES_DIR

Some files are assembled part by part (zipfile), for what the writing
libraries never produce: inline strings, saved formula values, repeated
ranges, damaged and hostile files.
"""

import datetime
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import warnings
import zipfile

import openpyxl
from odf.opendocument import OpenDocumentSpreadsheet
from odf.table import Table, TableCell, TableRow
from odf.text import P

TOOL = None
CLI = None
EXAMPLES = None
ENV = dict(os.environ, LC_ALL="C.UTF-8")
LARGE_ROWS = int(os.environ.get("VIREON_LARGE_SHEET_ROWS", "10000"))
# The most memory a refusal may take, in MB. The sanitizers keep up to 256 MB
# of freed memory aside to catch its later use.
PEAK_LIMIT_MB = 600 if os.environ.get("VIREON_SANITIZED") == "1" else 200


def dump(path):
    done = subprocess.run([TOOL, "dump", path], capture_output=True, env=ENV, timeout=300)
    out = done.stdout.decode("utf-8").strip()
    return done.returncode, (json.loads(out) if out else None)


def dump_with_peak(path):
    """As dump, with the peak memory in MB of xlstool and the reader program
    it starts, whichever is larger (a fresh interpreter sees only them)."""
    probe = (
        "import resource, subprocess, sys\n"
        "done = subprocess.run(sys.argv[1:], capture_output=True, timeout=300)\n"
        "sys.stdout.write(done.stdout.decode('utf-8'))\n"
        "sys.stderr.write(str(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss))\n"
        "sys.exit(done.returncode)\n"
    )
    done = subprocess.run(
        [sys.executable, "-c", probe, TOOL, "dump", path], capture_output=True, env=ENV, timeout=300
    )
    out = done.stdout.decode("utf-8").strip()
    return done.returncode, (json.loads(out) if out else None), int(done.stderr) / 1024


def bad_cell(suffix, row, column):
    """The cell message, with the position as it shows it: counted from 1 in
    .xlsx and .ods, as the spreadsheets do (only .xls keeps 0)."""
    return (
        "Error while parsing the %s file: cell at row %d and column %d does not appear to be a "
        "valid string or number." % (suffix, row, column)
    )


def prefix(suffix):
    return "Error while parsing the %s file: " % suffix


# --- .xlsx assembled by hand -------------------------------------------------

CONTENT_TYPES = (
    '<?xml version="1.0" encoding="UTF-8"?>'
    '<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">'
    '<Default Extension="xml" ContentType="application/xml"/></Types>'
)
PACKAGE_RELS = (
    '<?xml version="1.0" encoding="UTF-8"?>'
    '<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">'
    '<Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/'
    'relationships/officeDocument" Target="xl/workbook.xml"/></Relationships>'
)
WORKBOOK = (
    '<?xml version="1.0" encoding="UTF-8"?>'
    '<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" '
    'xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">'
    '<sheets><sheet name="T" sheetId="1" r:id="rId1"/></sheets></workbook>'
)
REL = (
    '<Relationship Id="%s" Type="http://schemas.openxmlformats.org/officeDocument/2006/'
    'relationships/%s" Target="%s"/>'
)


def sheet_xml(rows_xml):
    return (
        '<?xml version="1.0" encoding="UTF-8"?>'
        '<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">'
        "<sheetData>%s</sheetData></worksheet>" % rows_xml
    )


def write_xlsx(path, sheet, shared=None, styles=None, sheet_bytes=None):
    rels = [REL % ("rId1", "worksheet", "worksheets/sheet1.xml")]
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as z:
        z.writestr("[Content_Types].xml", CONTENT_TYPES)
        z.writestr("_rels/.rels", PACKAGE_RELS)
        z.writestr("xl/workbook.xml", WORKBOOK)
        if shared is not None:
            rels.append(REL % ("rId2", "sharedStrings", "sharedStrings.xml"))
            z.writestr(
                "xl/sharedStrings.xml",
                '<sst xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">%s</sst>'
                % shared,
            )
        if styles is not None:
            rels.append(REL % ("rId3", "styles", "styles.xml"))
            z.writestr(
                "xl/styles.xml",
                '<styleSheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">'
                "%s</styleSheet>" % styles,
            )
        z.writestr(
            "xl/_rels/workbook.xml.rels",
            '<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">'
            "%s</Relationships>" % "".join(rels),
        )
        z.writestr("xl/worksheets/sheet1.xml", sheet_bytes if sheet_bytes else sheet_xml(sheet))


# --- .ods assembled by hand --------------------------------------------------

ODS_MANIFEST = (
    '<?xml version="1.0" encoding="UTF-8"?>'
    '<manifest:manifest xmlns:manifest="urn:oasis:names:tc:opendocument:xmlns:manifest:1.0" '
    'manifest:version="1.2">'
    '<manifest:file-entry manifest:full-path="/" '
    'manifest:media-type="application/vnd.oasis.opendocument.spreadsheet"/>'
    '<manifest:file-entry manifest:full-path="content.xml" manifest:media-type="text/xml"%s'
    "</manifest:manifest>"
)


def content_xml(tables):
    return (
        '<?xml version="1.0" encoding="UTF-8"?>'
        '<office:document-content xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" '
        'xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" '
        'xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" office:version="1.2">'
        "<office:body><office:spreadsheet>%s</office:spreadsheet></office:body>"
        "</office:document-content>" % tables
    )


def write_ods(path, tables, encrypted=False, content_bytes=None):
    entry = (
        "><manifest:encryption-data manifest:checksum-type=\"SHA1\" manifest:checksum=\"x\"/>"
        "</manifest:file-entry>"
        if encrypted
        else "/>"
    )
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as z:
        z.writestr(
            zipfile.ZipInfo("mimetype"), "application/vnd.oasis.opendocument.spreadsheet"
        )
        z.writestr("META-INF/manifest.xml", ODS_MANIFEST % entry)
        z.writestr("content.xml", content_bytes if content_bytes else content_xml(tables))


def ods_cell(value):
    if value is None:
        return "<table:table-cell/>"
    if isinstance(value, str):
        return '<table:table-cell office:value-type="string"><text:p>%s</text:p></table:table-cell>' % value
    return '<table:table-cell office:value-type="float" office:value="%r"/>' % value


def write_ods_with_odfpy(path, sheets):
    document = OpenDocumentSpreadsheet()
    for name, rows in sheets:
        table = Table(name=name)
        for row in rows:
            tr = TableRow()
            for value in row:
                if value is None:
                    tr.addElement(TableCell())
                elif isinstance(value, str):
                    cell = TableCell(valuetype="string")
                    cell.addElement(P(text=value))
                    tr.addElement(cell)
                elif isinstance(value, datetime.datetime):
                    tr.addElement(TableCell(valuetype="date", datevalue=value.isoformat()))
                elif isinstance(value, datetime.time):
                    tr.addElement(TableCell(valuetype="time", timevalue="PT%02dH%02dM00S" % (value.hour, value.minute)))
                else:
                    tr.addElement(TableCell(valuetype="float", value=value))
            table.addElement(tr)
        document.spreadsheet.addElement(table)
    document.save(path)


def microbov_values(examples):
    """examples/microbov.csv as cell values: whole numbers as ints."""
    with open(os.path.join(examples, "microbov.csv"), encoding="utf-8") as f:
        rows = [line.rstrip("\n").split(",") for line in f if line.strip()]
    return [[int(v) if v.lstrip("-").isdigit() else v for v in row] for row in rows]


def table_rows(rows):
    """Expected table: every row as wide as the widest, empty cells empty text."""
    width = max(len(r) for r in rows)
    out = []
    for row in rows:
        cells = []
        for value in list(row) + [None] * (width - len(row)):
            if value is None:
                cells.append(["s", ""])
            elif isinstance(value, str):
                cells.append(["s", value])
            else:
                cells.append(["i", int(value)])
        out.append(cells)
    return out


SAMPLE = [
    ["Name", "M1", "M1", "M2"],
    ["Acc1", 120, 122, "*"],
    ["Bétail 日本 🌱", 3.0, None, -4],
    ["12", 0, 7, 2147483647],
]


class XlsxFromOpenpyxl(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()

    def tearDown(self):
        self.dir.cleanup()

    def path(self, name):
        return os.path.join(self.dir.name, name)

    def write(self, rows, name="in.xlsx", more_sheets=()):
        book = openpyxl.Workbook()
        sheet = book.active
        for r, row in enumerate(rows, start=1):
            for c, value in enumerate(row, start=1):
                if value is not None:
                    sheet.cell(row=r, column=c, value=value)
        for title, extra in more_sheets:
            other = book.create_sheet(title)
            for row in extra:
                other.append(row)
        book.save(self.path(name))
        return self.path(name)

    def test_cell_for_cell(self):
        code, result = dump(self.write(SAMPLE))
        self.assertEqual(code, 0, result)
        self.assertEqual(result["rows"], table_rows(SAMPLE))
        self.assertEqual(result["columns"], 4)

    def test_only_the_first_sheet(self):
        code, result = dump(self.write(SAMPLE, more_sheets=[("Other", [["x", 1.5]])]))
        self.assertEqual(code, 0, result)
        self.assertEqual(result["rows"], table_rows(SAMPLE))

    def test_refused_cells(self):
        cases = {
            "fraction": 1.5,
            "date": datetime.datetime(2024, 3, 1),
            "time": datetime.time(12, 30),
            "truth value": True,
        }
        for what, value in cases.items():
            with self.subTest(what=what):
                rows = [["Name", "M1", "M1"], ["A", 1, 2], ["B", 3, value]]
                code, result = dump(self.write(rows))
                self.assertEqual(code, 1, result)
                self.assertEqual(result["error"], bad_cell(".xlsx", 3, 3))

    def test_whole_number_shown_as_date_refused(self):
        path = self.write([["Name", "M1"], ["A", 45000]])
        book = openpyxl.load_workbook(path)
        book.active["B2"].number_format = "dd/mm/yyyy"
        book.save(path)
        code, result = dump(path)
        self.assertEqual(result["error"], bad_cell(".xlsx", 2, 2))
        # A number format with text in quotes only is no date.
        book.active["B2"].number_format = '0 "days"'
        book.save(path)
        code, result = dump(path)
        self.assertEqual(code, 0, result)
        self.assertEqual(result["rows"][1], [["s", "A"], ["i", 45000]])

    def test_formula_without_saved_value_is_empty(self):
        code, result = dump(self.write([["Name", "M1", "M1"], ["A", 1, "=B2+1"]]))
        self.assertEqual(code, 0, result)
        self.assertEqual(result["rows"][1], [["s", "A"], ["i", 1], ["s", ""]])

    def test_large_sheet(self):
        rows = [["Name"] + ["M%d" % (c // 2) for c in range(49)]]
        rows += [["A%d" % r] + [(r * 7 + c) % 300 for c in range(49)] for r in range(1, LARGE_ROWS)]
        book = openpyxl.Workbook(write_only=True)
        sheet = book.create_sheet()
        for row in rows:
            sheet.append(row)
        book.save(self.path("large.xlsx"))
        code, result = dump(self.path("large.xlsx"))
        self.assertEqual(code, 0, result)
        self.assertEqual(len(result["rows"]), LARGE_ROWS)
        self.assertEqual(result["rows"], table_rows(rows))


class XlsxAssembled(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()

    def tearDown(self):
        self.dir.cleanup()

    def path(self, name):
        return os.path.join(self.dir.name, name)

    def read(self, **parts):
        write_xlsx(self.path("in.xlsx"), **parts)
        return dump(self.path("in.xlsx"))

    def test_shared_inline_and_rich_strings(self):
        shared = (
            "<si><t>Name</t></si><si><r><t>M</t></r><r><t>1</t></r></si>"
            "<si><t>漢</t><rPh sb=\"0\" eb=\"1\"><t>カン</t></rPh></si>"
        )
        sheet = (
            '<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c></row>'
            '<row r="2"><c r="A2" t="inlineStr"><is><t>x y</t></is></c>'
            '<c r="B2" t="s"><v>2</v></c></row>'
        )
        code, result = self.read(sheet=sheet, shared=shared)
        self.assertEqual(code, 0, result)
        self.assertEqual(result["rows"], [[["s", "Name"], ["s", "M1"]], [["s", "x y"], ["s", "漢"]]])

    def test_saved_formula_values_and_references_left_out(self):
        sheet = (
            "<row><c t=\"inlineStr\"><is><t>Name</t></is></c><c t=\"inlineStr\"><is><t>M</t></is></c>"
            "<c t=\"inlineStr\"><is><t>M</t></is></c></row>"
            '<row><c t="str"><f>A1&amp;"2"</f><v>Name2</v></c><c><f>1+1</f><v>2</v></c>'
            "<c><f>1+2</f></c></row>"
        )
        code, result = self.read(sheet=sheet)
        self.assertEqual(code, 0, result)
        self.assertEqual(
            result["rows"],
            [[["s", "Name"], ["s", "M"], ["s", "M"]], [["s", "Name2"], ["i", 2], ["s", ""]]],
        )

    def test_built_in_date_format_refused(self):
        styles = '<cellXfs count="2"><xf numFmtId="0"/><xf numFmtId="14"/></cellXfs>'
        sheet = '<row r="1"><c r="A1"><v>1</v></c><c r="B1" s="1"><v>2</v></c></row>'
        code, result = self.read(sheet=sheet, styles=styles)
        self.assertEqual(result["error"], bad_cell(".xlsx", 1, 2))

    def test_past_the_largest_sheet(self):
        code, result = self.read(sheet='<row r="1"><c r="XFE1"><v>1</v></c></row>')
        self.assertEqual(code, 1, result)
        self.assertEqual(
            result["error"],
            prefix(".xlsx") + "the first worksheet reaches row 1 and column 16385, more cells "
            "than Vireon reads.",
        )

    def test_sparse_sheet(self):
        sheet = '<row r="1"><c r="A1"><v>1</v></c></row><row r="100000"><c r="Z100000"><v>1</v></c></row>'
        code, result = self.read(sheet=sheet)
        self.assertEqual(code, 1, result)
        self.assertTrue(result["error"].startswith(prefix(".xlsx") + "the first worksheet reaches "
                                                   "row 100000 and column 26, but fewer"), result)

    def test_document_type_declaration_refused(self):
        sheet = (
            '<?xml version="1.0"?><!DOCTYPE worksheet [<!ENTITY a "aaaaaaaaaa">'
            '<!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;">]>'
            '<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">'
            '<sheetData><row><c t="inlineStr"><is><t>&b;</t></is></c></row></sheetData></worksheet>'
        )
        code, result = self.read(sheet="", sheet_bytes=sheet)
        self.assertEqual(code, 1, result)
        self.assertEqual(result["error"], prefix(".xlsx") + "the file cannot be read as a workbook.")

    def test_zip_bomb_refused(self):
        # 300 MB of one repeated row packs to a few hundred kilobytes.
        row = b'<row><c t="inlineStr"><is><t>x</t></is></c></row>'
        body = row * (300 * 1024 * 1024 // len(row))
        sheet = sheet_xml("").encode().replace(b"<sheetData>", b"<sheetData>" + body)
        code, result = self.read(sheet="", sheet_bytes=sheet)
        self.assertEqual(code, 1, result)
        self.assertEqual(
            result["error"],
            prefix(".xlsx") + "a part of the workbook would unpack to more than 256 MB; it was not "
            "unpacked.",
        )

    def test_zip_bomb_understating_its_size_refused(self):
        # The zip headers say the sheet unpacks to 1 KB: unpacking stops
        # there, and the part, cut short of its checksum, is damaged.
        row = b'<row><c t="inlineStr"><is><t>x</t></is></c></row>'
        body = row * (300 * 1024 * 1024 // len(row))
        sheet = sheet_xml("").encode().replace(b"<sheetData>", b"<sheetData>" + body)
        path = self.path("in.xlsx")
        write_xlsx(path, sheet="", sheet_bytes=sheet)
        with open(path, "rb") as f:
            data = bytearray(f.read())
        name = b"xl/worksheets/sheet1.xml"
        for signature, size_at in ((b"PK\x03\x04", 22), (b"PK\x01\x02", 24)):
            name_at = data.index(name, data.index(signature))
            header = data.rindex(signature, 0, name_at)
            data[header + size_at : header + size_at + 4] = (1024).to_bytes(4, "little")
        with open(path, "wb") as f:
            f.write(bytes(data))
        code, result = dump(path)
        self.assertEqual(code, 1, result)
        self.assertEqual(result["error"], prefix(".xlsx") + "the file cannot be read as a workbook.")

    def test_over_long_shared_string_refused(self):
        shared = "<si><t>Name</t></si><si><t>%s</t></si>" % ("x" * 32768)
        sheet = (
            '<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>0</v></c></row>'
            '<row r="2"><c r="A2" t="s"><v>0</v></c><c r="B2" t="s"><v>1</v></c></row>'
        )
        code, result = self.read(sheet=sheet, shared=shared)
        self.assertEqual(code, 1, result)
        self.assertEqual(
            result["error"],
            prefix(".xlsx") + "the cell at row 2 and column 2 holds more than 32,767 characters, "
            "more than a spreadsheet cell holds.",
        )

    def test_empty_sheet(self):
        code, result = self.read(sheet="")
        self.assertEqual(result["error"], prefix(".xlsx") + "the first worksheet is empty.")


class HostileFiles(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()

    def tearDown(self):
        self.dir.cleanup()

    def write(self, name, data):
        path = os.path.join(self.dir.name, name)
        with open(path, "wb") as f:
            f.write(data)
        return path

    def test_each_says_what_it_is(self):
        unreadable = "the file cannot be read as a workbook."
        good = os.path.join(self.dir.name, "good.xlsx")
        write_xlsx(good, sheet='<row><c t="inlineStr"><is><t>a</t></is></c></row>')
        with open(good, "rb") as f:
            whole = f.read()
        zip_of_text = os.path.join(self.dir.name, "other.ods")
        with zipfile.ZipFile(zip_of_text, "w") as z:
            z.writestr("notes.txt", "hello")
        with open(zip_of_text, "rb") as f:
            other_zip = f.read()
        encrypted = b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1" + b"\0" * 500 + "EncryptedPackage".encode(
            "utf-16-le"
        )
        empty = "the file is empty."
        other = "the file is not a %s workbook but another kind of file."
        cases = [
            ("empty.xlsx", b"", empty),
            ("empty.ods", b"", empty),
            ("text.xlsx", b"Name,M1\nA,1\n", other % ".xlsx"),
            ("text.ods", b"Name,M1\nA,1\n", other % ".ods"),
            ("truncated.xlsx", whole[: len(whole) // 2], unreadable),
            ("truncated.ods", whole[: len(whole) // 3], unreadable),
            ("other.xlsx", other_zip, other % ".xlsx"),
            ("other.ods", other_zip, other % ".ods"),
            ("encrypted.xlsx", encrypted, "the workbook is protected by a password."),
        ]
        for name, data, message in cases:
            with self.subTest(name=name):
                code, result = dump(self.write(name, data))
                self.assertEqual(code, 1, result)
                suffix = "." + name.split(".")[-1]
                self.assertEqual(result["error"], prefix(suffix) + message)

    def test_parts_named_twice_refused(self):
        # Zip archives may name a part twice, and part names do not tell
        # case apart: which one a reader took would be chance.
        sheet = sheet_xml('<row><c t="inlineStr"><is><t>a</t></is></c></row>')
        other = sheet_xml('<row><c t="inlineStr"><is><t>b</t></is></c></row>')
        xlsx = os.path.join(self.dir.name, "good.xlsx")
        write_xlsx(xlsx, sheet='<row><c t="inlineStr"><is><t>a</t></is></c></row>')
        ods = os.path.join(self.dir.name, "good.ods")
        write_ods(ods, '<table:table table:name="T"><table:table-row>%s</table:table-row>'
                  "</table:table>" % ods_cell("a"))
        ods_content = content_xml(
            '<table:table table:name="T"><table:table-row>%s</table:table-row></table:table>'
            % ods_cell("b")
        )
        cases = [
            (xlsx, "twice.xlsx", "xl/worksheets/sheet1.xml", other),
            (xlsx, "case.xlsx", "XL/Worksheets/Sheet1.xml", other),
            (xlsx, "workbook.xlsx", "xl/workbook.xml", WORKBOOK),
            (ods, "twice.ods", "content.xml", ods_content),
            (ods, "case.ods", "Content.XML", ods_content),
        ]
        for source, name, part, data in cases:
            with self.subTest(name=name):
                path = os.path.join(self.dir.name, name)
                shutil.copyfile(source, path)
                with warnings.catch_warnings():
                    warnings.simplefilter("ignore")  # "Duplicate name"
                    with zipfile.ZipFile(path, "a") as z:
                        z.writestr(part, data)
                code, result = dump(path)
                self.assertEqual(code, 1, result)
                suffix = "." + name.split(".")[-1]
                self.assertEqual(
                    result["error"], prefix(suffix) + "the file cannot be read as a workbook."
                )
        # The sound files read.
        self.assertEqual(dump(xlsx)[0], 0)
        self.assertEqual(dump(ods)[0], 0)

    def test_encrypted_ods(self):
        path = os.path.join(self.dir.name, "locked.ods")
        write_ods(path, "", encrypted=True)
        code, result = dump(path)
        self.assertEqual(result["error"], prefix(".ods") + "the workbook is protected by a password.")


class OdsFiles(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()

    def tearDown(self):
        self.dir.cleanup()

    def path(self, name):
        return os.path.join(self.dir.name, name)

    def test_cell_for_cell_from_odfpy(self):
        write_ods_with_odfpy(self.path("in.ods"), [("T", SAMPLE), ("Other", [["x", 1.5]])])
        code, result = dump(self.path("in.ods"))
        self.assertEqual(code, 0, result)
        self.assertEqual(result["rows"], table_rows(SAMPLE))

    def test_refused_cells_from_odfpy(self):
        cases = {
            "fraction": 1.5,
            "date": datetime.datetime(2024, 3, 1),
            "time": datetime.time(12, 30),
        }
        for what, value in cases.items():
            with self.subTest(what=what):
                write_ods_with_odfpy(self.path("bad.ods"), [("T", [["Name", "M"], ["A", 1], [value, 2]])])
                code, result = dump(self.path("bad.ods"))
                self.assertEqual(code, 1, result)
                self.assertEqual(result["error"], bad_cell(".ods", 3, 1))

    def test_repeats_kept_within_the_used_extent(self):
        # As office suites write them: runs of equal cells, and empty rows
        # and columns repeated to the sheet's last row and column.
        table = (
            '<table:table table:name="T">'
            '<table:table-column table:number-columns-repeated="16384"/>'
            "<table:table-row>%s%s"
            '<table:table-cell table:number-columns-repeated="16381"/></table:table-row>'
            '<table:table-row table:number-rows-repeated="2">%s'
            '<table:table-cell office:value-type="float" office:value="7" '
            'table:number-columns-repeated="2"/>'
            '<table:table-cell table:number-columns-repeated="16381"/></table:table-row>'
            '<table:table-row-group><table:table-row>%s%s%s</table:table-row></table:table-row-group>'
            '<table:table-row table:number-rows-repeated="1048571">'
            '<table:table-cell table:number-columns-repeated="16384"/></table:table-row>'
            "</table:table>"
            % (
                ods_cell("Name"),
                '<table:table-cell office:value-type="string" table:number-columns-repeated="2">'
                "<text:p>M<text:s text:c=\"2\"/>1</text:p></table:table-cell>",
                ods_cell("A"),
                ods_cell("B"),
                ods_cell(None),
                '<table:table-cell office:value-type="percentage" office:value="1"/>',
            )
        )
        write_ods(self.path("runs.ods"), table + '<table:table table:name="U"/>')
        code, result = dump(self.path("runs.ods"))
        self.assertEqual(code, 0, result)
        self.assertEqual(
            result["rows"],
            [
                [["s", "Name"], ["s", "M  1"], ["s", "M  1"]],
                [["s", "A"], ["i", 7], ["i", 7]],
                [["s", "A"], ["i", 7], ["i", 7]],
                [["s", "B"], ["s", ""], ["i", 1]],
            ],
        )

    def test_formulas_give_their_saved_values(self):
        # A formula gives the value saved with it; one never computed has
        # none and is an empty cell, as in .xlsx.
        table = (
            '<table:table table:name="T"><table:table-row>%s%s%s</table:table-row>'
            "<table:table-row>%s"
            '<table:table-cell table:formula="of:=1+1" office:value-type="float" office:value="2">'
            "<text:p>2</text:p></table:table-cell>"
            '<table:table-cell table:formula="of:=A1" office:value-type="string" '
            'office:string-value="x"><text:p>x</text:p></table:table-cell>'
            "</table:table-row><table:table-row>%s"
            '<table:table-cell table:formula="of:=B2*2" office:value-type="float"/>'
            '<table:table-cell table:formula="of:=B2" office:value-type="float" office:value="3"/>'
            "</table:table-row></table:table>"
            % (ods_cell("Name"), ods_cell("M1"), ods_cell("M1"), ods_cell("A"), ods_cell("B"))
        )
        write_ods(self.path("formulas.ods"), table)
        code, result = dump(self.path("formulas.ods"))
        self.assertEqual(code, 0, result)
        self.assertEqual(
            result["rows"],
            [
                [["s", "Name"], ["s", "M1"], ["s", "M1"]],
                [["s", "A"], ["i", 2], ["s", "x"]],
                [["s", "B"], ["s", ""], ["i", 3]],
            ],
        )

    def test_repeated_content_past_the_largest_sheet(self):
        table = (
            '<table:table table:name="T"><table:table-row table:number-rows-repeated="2000000">'
            '<table:table-cell office:value-type="float" office:value="1"/></table:table-row>'
            "</table:table>"
        )
        write_ods(self.path("huge.ods"), table)
        code, result = dump(self.path("huge.ods"))
        self.assertEqual(code, 1, result)
        self.assertEqual(
            result["error"],
            prefix(".ods") + "the first worksheet reaches row 1048577 and column 1, more cells "
            "than Vireon reads.",
        )

    def test_dense_repeats_past_the_cell_limit(self):
        table = (
            '<table:table table:name="T"><table:table-row table:number-rows-repeated="1000000">'
            '<table:table-cell office:value-type="float" office:value="1" '
            'table:number-columns-repeated="1000"/></table:table-row></table:table>'
        )
        write_ods(self.path("dense.ods"), table)
        code, result = dump(self.path("dense.ods"))
        self.assertEqual(code, 1, result)
        self.assertEqual(
            result["error"],
            prefix(".ods") + "the first worksheet reaches row 1000000 and column 1000, more cells "
            "than Vireon reads.",
        )

    def test_counted_spaces_refused_at_once(self):
        # 60,000 cells of 32,767 spaces each, written as a count: 23 KB of
        # zip that once cost the reader 3.9 GB. The text is weighed before
        # it is made, and the cells past the text budget are never read.
        cell = (
            '<table:table-cell office:value-type="string"><text:p><text:s text:c="32767"/>'
            "</text:p></table:table-cell>"
        )
        row = "<table:table-row>%s</table:table-row>" % (cell * 100)
        write_ods(self.path("spaces.ods"), '<table:table table:name="T">%s</table:table>' % (row * 600))
        self.assertLess(os.path.getsize(self.path("spaces.ods")), 60000)
        code, result, peak = dump_with_peak(self.path("spaces.ods"))
        self.assertEqual(code, 1, result)
        self.assertEqual(
            result["error"],
            prefix(".ods") + "by the cell at row 41 and column 97, the cells of the first "
            "worksheet hold more than 134,217,728 characters of text, more than Vireon reads.",
        )
        self.assertLess(peak, PEAK_LIMIT_MB, "peak memory in MB")

    def test_over_long_cell_refused(self):
        table = (
            '<table:table table:name="T"><table:table-row>%s%s%s</table:table-row>'
            "<table:table-row>%s%s"
            '<table:table-cell office:value-type="string"><text:p>a<text:s text:c="32767"/>'
            "</text:p></table:table-cell></table:table-row></table:table>"
            % (ods_cell("Name"), ods_cell("M1"), ods_cell("M1"), ods_cell("A"), ods_cell(1))
        )
        write_ods(self.path("long.ods"), table)
        code, result = dump(self.path("long.ods"))
        self.assertEqual(code, 1, result)
        self.assertEqual(
            result["error"],
            prefix(".ods") + "the cell at row 2 and column 3 holds more than 32,767 characters, "
            "more than a spreadsheet cell holds.",
        )
        # The most a cell holds is read.
        write_ods(self.path("full.ods"), table.replace('c="32767"', 'c="32766"'))
        code, result = dump(self.path("full.ods"))
        self.assertEqual(code, 0, result)
        self.assertEqual(result["rows"][1][2], ["s", "a" + " " * 32766])

    def test_repeated_text_past_the_budget(self):
        # One cell of a hundred characters repeated over a thousand rows of
        # the widest sheet: counted, not unpacked.
        table = (
            '<table:table table:name="T"><table:table-row table:number-rows-repeated="1000">'
            '<table:table-cell office:value-type="string" table:number-columns-repeated="16384">'
            "<text:p>%s</text:p></table:table-cell></table:table-row></table:table>" % ("x" * 100)
        )
        write_ods(self.path("repeated.ods"), table)
        code, result, peak = dump_with_peak(self.path("repeated.ods"))
        self.assertEqual(code, 1, result)
        self.assertEqual(
            result["error"],
            prefix(".ods") + "by the cell at row 1 and column 1, the cells of the first "
            "worksheet hold more than 134,217,728 characters of text, more than Vireon reads.",
        )
        self.assertLess(peak, PEAK_LIMIT_MB, "peak memory in MB")

    def test_no_table(self):
        write_ods(self.path("none.ods"), "")
        code, result = dump(self.path("none.ods"))
        self.assertEqual(result["error"], prefix(".ods") + "the workbook has no worksheet.")


class XlsxWrittenReadByOpenpyxl(unittest.TestCase):
    def test_cell_for_cell(self):
        rows = [
            ["Name", "M1", "M1", "M2"],
            ["Acc1", "120", "007", "*"],
            ["Bétail 日本 🌱", "", "-4", "1.5"],
        ]
        with tempfile.TemporaryDirectory() as d:
            source = os.path.join(d, "in.csv")
            with open(source, "w", encoding="utf-8") as f:
                f.write("".join(",".join('"%s"' % v for v in row) + "\n" for row in rows))
            target = os.path.join(d, "out.xlsx")
            done = subprocess.run([TOOL, "convert", source, target], env=ENV, timeout=120)
            self.assertEqual(done.returncode, 0)
            sheet = openpyxl.load_workbook(target).worksheets[0]
            self.assertEqual(
                [list(r) for r in sheet.iter_rows(values_only=True)],
                [
                    ["Name", "M1", "M1", "M2"],
                    ["Acc1", 120, 7, "*"],
                    ["Bétail 日本 🌱", None, -4, "1.5"],
                ],
            )


class MicrobovThroughTheCommandLine(unittest.TestCase):
    """microbov as .xlsx and .ods gives exactly the result of microbov.csv."""

    def run_cli(self, path):
        done = subprocess.run(
            [CLI, "-q", "-i", "1", "-r", "5", "--result", path],
            capture_output=True,
            env=ENV,
            timeout=600,
        )
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        return done.stdout.decode()

    def test_same_result(self):
        source = os.path.join(EXAMPLES, "microbov.csv")
        values = microbov_values(EXAMPLES)
        expected = self.run_cli(source)
        self.assertEqual(expected.count("\n"), 100)
        with tempfile.TemporaryDirectory() as d:
            xlsx = os.path.join(d, "microbov.xlsx")
            book = openpyxl.Workbook(write_only=True)
            sheet = book.create_sheet()
            for row in values:
                sheet.append(row)
            book.save(xlsx)
            ods = os.path.join(d, "microbov.ods")
            write_ods_with_odfpy(ods, [("microbov", values)])
            for path in (xlsx, ods):
                with self.subTest(path=os.path.basename(path)):
                    self.assertEqual(self.run_cli(path), expected)


if __name__ == "__main__":
    TOOL = os.path.abspath(sys.argv[1])
    CLI = os.path.abspath(sys.argv[2])
    EXAMPLES = os.path.abspath(sys.argv[3])
    unittest.main(argv=[sys.argv[0], "-v"])
