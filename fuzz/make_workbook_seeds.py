#!/usr/bin/env python3
"""Writes the seed corpus of the .xlsx and .ods fuzz targets:
    /usr/bin/python3 fuzz/make_workbook_seeds.py fuzz/corpus

Files as openpyxl and odfpy write them, and files assembled part by part
with the helpers of tests/spreadsheet/test_workbook_agreement.py (inline
strings, saved formula values, date styles, repeated ranges). Each also as
its XML parts alone, separated by "<!--part-->", which the targets pack into
an archive themselves (parts_*.xml): the worksheet, shared strings, styles
and workbook of an .xlsx; the content and manifest of an .ods.
"""

import datetime
import os
import sys
import zipfile

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "tests", "spreadsheet"))

import openpyxl  # noqa: E402
import test_workbook_agreement as w  # noqa: E402


SEPARATOR = b"<!--part-->"


def write_parts(workbook, names, target):
    """The named parts of a zipped workbook, as the targets' part inputs."""
    with zipfile.ZipFile(workbook) as z:
        present = {n.lower(): n for n in z.namelist()}
        parts = [z.read(present[n.lower()]) if n.lower() in present else b"" for n in names]
    with open(target, "wb") as f:
        f.write(SEPARATOR.join(parts))


def main(corpus):
    xlsx = os.path.join(corpus, "xlsx")
    ods = os.path.join(corpus, "ods")
    os.makedirs(xlsx, exist_ok=True)
    os.makedirs(ods, exist_ok=True)

    book = openpyxl.Workbook()
    for row in w.SAMPLE:
        book.active.append(row)
    book.save(os.path.join(xlsx, "openpyxl_table.xlsx"))

    book = openpyxl.Workbook()
    for row in w.SAMPLE:
        book.active.append(row)
    book.active["B3"].number_format = "dd/mm/yyyy"
    book.create_sheet("Other").append(["x", 1.5, datetime.time(12, 30)])
    book.save(os.path.join(xlsx, "openpyxl.xlsx"))

    w.write_xlsx(
        os.path.join(xlsx, "assembled.xlsx"),
        sheet=(
            '<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="inlineStr"><is><t>M</t></is></c>'
            '<c r="C1" s="1"><v>3</v></c></row>'
            '<row r="3"><c t="str"><f>A1</f><v>Name</v></c><c><f>1+1</f><v>2</v></c>'
            '<c t="b"><v>1</v></c></row>'
        ),
        shared='<si><r><t>Na</t></r><r><t>me</t></r><rPh sb="0" eb="1"><t>x</t></rPh></si>',
        styles=(
            '<numFmts count="1"><numFmt numFmtId="164" formatCode="[h]:mm"/></numFmts>'
            '<cellXfs count="2"><xf numFmtId="0"/><xf numFmtId="164"/></cellXfs>'
        ),
    )

    w.write_ods_with_odfpy(
        os.path.join(ods, "odfpy.ods"),
        [("T", w.SAMPLE), ("Other", [["x", 1.5, datetime.datetime(2024, 3, 1)]])],
    )
    table = (
        '<table:table table:name="T">'
        '<table:table-column table:number-columns-repeated="1024"/>'
        "<table:table-row>%s"
        '<table:table-cell office:value-type="string" table:number-columns-repeated="2">'
        '<text:p>M<text:s text:c="2"/>1<text:tab/></text:p><text:p>b</text:p></table:table-cell>'
        '<table:table-cell table:number-columns-repeated="1021"/></table:table-row>'
        '<table:table-row-group><table:table-row table:number-rows-repeated="2">%s'
        '<table:table-cell office:value-type="percentage" office:value="1" '
        'table:number-columns-repeated="2"/></table:table-row></table:table-row-group>'
        '<table:table-row table:number-rows-repeated="1048573">'
        '<table:table-cell table:number-columns-repeated="1024"/></table:table-row>'
        "</table:table>" % (w.ods_cell("Name"), w.ods_cell("A"))
    )
    w.write_ods(os.path.join(ods, "assembled.ods"), table)

    xlsx_parts = [
        "xl/worksheets/sheet1.xml",
        "xl/sharedStrings.xml",
        "xl/styles.xml",
        "xl/workbook.xml",
    ]
    for name in ("openpyxl_table", "openpyxl", "assembled"):
        write_parts(
            os.path.join(xlsx, name + ".xlsx"), xlsx_parts, os.path.join(xlsx, "parts_%s.xml" % name)
        )
    for name in ("odfpy", "assembled"):
        write_parts(
            os.path.join(ods, name + ".ods"),
            ["content.xml", "META-INF/manifest.xml"],
            os.path.join(ods, "parts_%s.xml" % name),
        )


if __name__ == "__main__":
    main(sys.argv[1])
