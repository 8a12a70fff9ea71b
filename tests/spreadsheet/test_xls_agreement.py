"""Agreement of the .xls reading and writing with xlrd and xlwt.

Drives the spreadsheet layer through the xlstool helper:
    python3 test_xls_agreement.py XLSTOOL FIXTURES_DIR
"""

import json
import os
import random
import subprocess
import sys
import tempfile
import unittest

import xlrd

TOOL = None
FIXTURES = None
PARSE_PREFIX = "Error while parsing the .xls file:"
ENV = dict(os.environ, LC_ALL="C.UTF-8")


def run_tool(*args):
    done = subprocess.run([TOOL, *args], capture_output=True, env=ENV, timeout=120)
    out = done.stdout.decode("utf-8").strip()
    return done.returncode, (json.loads(out) if out else None), done.stderr.decode()


def dump(path):
    return run_tool("dump", path)


def csv_field(cell):
    kind, value = cell
    return str(value) if kind == "i" else '"%s"' % value


def write_csv(path, rows):
    with open(path, "w", encoding="utf-8", newline="") as f:
        for row in rows:
            f.write(",".join(csv_field(cell) for cell in row) + "\n")


def random_rows(seed, rows, columns, unicode_share=0.1):
    rng = random.Random(seed)
    alphabet = "abcxyzé*ÿ ΩЖ日本🌱-_"
    header = [["s", "Name"]] + [["s", "M%d" % (c // 2 + 1)] for c in range(columns - 1)]
    out = [header]
    for r in range(1, rows):
        row = [["s", "Acc%d" % r]]
        for _ in range(columns - 1):
            roll = rng.random()
            if roll < 0.1:
                row.append(["s", "*"])
            elif roll < 0.1 + unicode_share:
                n = rng.randint(1, 12)
                row.append(["s", "".join(rng.choice(alphabet) for _ in range(n)).strip() or "q"])
            else:
                row.append(["i", rng.randint(-1000, 1000000)])
        out.append(row)
    return out


def xlrd_rows(sheet):
    rows = []
    for r in range(sheet.nrows):
        row = []
        for cell in sheet.row(r):
            if cell.ctype == xlrd.XL_CELL_TEXT:
                row.append(["s", cell.value])
            elif cell.ctype == xlrd.XL_CELL_NUMBER and cell.value == int(cell.value):
                row.append(["i", int(cell.value)])
            else:
                row.append([xlrd.biff_text_from_num.get(cell.ctype, "?"), cell.value])
        rows.append(row)
    return rows


class OurFilesReadByXlrd(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.TemporaryDirectory()
        self.dir = self.tmp.name

    def tearDown(self):
        self.tmp.cleanup()

    def write_xls(self, rows, name="out.xls"):
        source = os.path.join(self.dir, "in.csv")
        target = os.path.join(self.dir, name)
        write_csv(source, rows)
        code, message, err = run_tool("convert", source, target)
        self.assertEqual(code, 0, (message, err))
        return target

    def test_three_sheets_grid_on_first(self):
        rows = [
            [["s", "Name"], ["s", "M1"], ["s", "M1"]],
            [["s", "Acc1"], ["i", 12], ["s", "*"]],
            [["i", 5], ["i", -7], ["i", 2147483647]],
        ]
        book = xlrd.open_workbook(self.write_xls(rows))
        self.assertEqual(book.nsheets, 3)
        self.assertEqual(xlrd_rows(book.sheet_by_index(0)), rows)
        self.assertEqual(book.sheet_by_index(1).nrows, 0)
        self.assertEqual(book.sheet_by_index(2).nrows, 0)

    def test_integer_looking_text_written_as_number(self):
        rows = [[["s", "Name"], ["s", "007"]], [["s", "12"], ["s", "-0"]]]
        sheet = xlrd.open_workbook(self.write_xls(rows)).sheet_by_index(0)
        self.assertEqual(
            xlrd_rows(sheet), [[["s", "Name"], ["i", 7]], [["i", 12], ["i", 0]]]
        )

    def test_empty_text_is_an_empty_cell(self):
        rows = [[["s", "Name"], ["s", ""]], [["s", "Acc"], ["i", 3]]]
        sheet = xlrd.open_workbook(self.write_xls(rows)).sheet_by_index(0)
        self.assertIn(sheet.cell_type(0, 1), (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK))
        self.assertEqual(sheet.cell_value(0, 1), "")
        self.assertEqual(xlrd_rows(sheet)[1], rows[1])

    def test_unicode_texts(self):
        texts = ["é", "ÿþ", "Ω", "日本語", "🌱 seed", "Zürich Ж"]
        rows = [[["s", "Name"]] + [["s", t] for t in texts], [["s", "Acc"]] + [["i", 1]] * len(texts)]
        sheet = xlrd.open_workbook(self.write_xls(rows)).sheet_by_index(0)
        self.assertEqual(xlrd_rows(sheet), rows)

    def test_long_texts_span_records(self):
        long_latin = "é" * 9000
        long_wide = "Ω" * 5000
        many = [["s", "x%05d" % i] for i in range(3000)]
        rows = [
            [["s", "Name"], ["s", long_latin], ["s", long_wide]],
            [["s", "Acc"], ["s", long_wide + "a"], ["s", long_latin + "b"]],
        ]
        rows += [[cell, ["i", 1], ["s", "y" + cell[1]]] for cell in many]
        sheet = xlrd.open_workbook(self.write_xls(rows)).sheet_by_index(0)
        self.assertEqual(xlrd_rows(sheet), rows)

    def test_random_tables(self):
        for seed in range(8):
            with self.subTest(seed=seed):
                rows = random_rows(seed, 1 + seed * 37, 2 + seed * 5)
                sheet = xlrd.open_workbook(self.write_xls(rows)).sheet_by_index(0)
                self.assertEqual(xlrd_rows(sheet), rows)

    def test_example_table(self):
        target = os.path.join(self.dir, "microbov.xls")
        source = os.path.join(FIXTURES, "..", "..", "examples", "microbov.csv")
        code, _, err = run_tool("convert", source, target)
        self.assertEqual(code, 0, err)
        code, ours, _ = dump(source)
        self.assertEqual(code, 0)
        sheet = xlrd.open_workbook(target).sheet_by_index(0)
        self.assertEqual((sheet.nrows, sheet.ncols), (705, 61))
        self.assertEqual(xlrd_rows(sheet), ours["rows"])


class XlwtFilesReadByUs(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.TemporaryDirectory()
        self.dir = self.tmp.name

    def tearDown(self):
        self.tmp.cleanup()

    def check(self, make):
        path, expected = make(self.dir)
        code, result, err = dump(path)
        self.assertNotIn("CRITICAL", err)
        if "rows" in expected:
            self.assertEqual(code, 0, result)
            self.assertEqual(result["rows"], expected["rows"])
            self.assertEqual(result["columns"], len(expected["rows"][0]))
        elif "error_at" in expected:
            r, c = expected["error_at"]
            self.assertEqual(code, 1)
            self.assertEqual(
                result["error"],
                "Error while parsing the .xls file: cell at row %d and column %d does not "
                "appear to be a valid string or number." % (r, c),
            )
        else:
            self.assertEqual(code, 1, result)
            self.assertTrue(result["error"].startswith(expected["error_prefix"]), result)
            self.assertGreater(len(result["error"]), len(expected["error_prefix"]) + 5)


def add_fixture_tests():
    import xlwt_fixtures

    for make in xlwt_fixtures.MAKERS:
        setattr(XlwtFilesReadByUs, "test_" + make.__name__, lambda self, m=make: self.check(m))


class RoundTrip(unittest.TestCase):
    def test_written_tables_read_back(self):
        with tempfile.TemporaryDirectory() as d:
            for seed in range(6):
                with self.subTest(seed=seed):
                    rows = random_rows(100 + seed, 2 + seed * 50, 2 + seed * 9)
                    source = os.path.join(d, "in.csv")
                    target = os.path.join(d, "back.xls")
                    write_csv(source, rows)
                    self.assertEqual(run_tool("convert", source, target)[0], 0)
                    code, result, _ = dump(target)
                    self.assertEqual(code, 0)
                    self.assertEqual(result["rows"], rows)

    def test_xls_to_xls_with_unicode_file_names(self):
        with tempfile.TemporaryDirectory() as d:
            rows = random_rows(7, 30, 9, unicode_share=0.3)
            source = os.path.join(d, "in.csv")
            first = os.path.join(d, "données_日本.xls")
            second = os.path.join(d, "Ωmega copy.xls")
            write_csv(source, rows)
            self.assertEqual(run_tool("convert", source, first)[0], 0)
            self.assertEqual(run_tool("convert", first, second)[0], 0)
            self.assertEqual(dump(second)[1]["rows"], rows)


if __name__ == "__main__":
    TOOL = os.path.abspath(sys.argv[1])
    FIXTURES = os.path.abspath(sys.argv[2])
    sys.path.insert(0, os.path.join(FIXTURES, "spreadsheet"))
    add_fixture_tests()
    unittest.main(argv=[sys.argv[0], "-v"])
