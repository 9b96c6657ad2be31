"""The tables that are kept with the sources are those that the generator writes, the fingerprint
covers all of them, and the generator tells what it cannot read."""

import contextlib
import copy
import filecmp
import io
import os
import shutil
import sys
import tempfile
import unittest
import unittest.mock

from probe_support import DATA, SOURCE, need_data

FOLDER = os.path.join(SOURCE, "intl", "data")


def run_generator(*arguments):
    """Exit code and error text of the generator."""
    import generate
    errors = io.StringIO()
    kept, sys.argv = sys.argv, ["generate.py", *arguments]
    try:
        with contextlib.redirect_stderr(errors):
            code = generate.main()
    finally:
        sys.argv = kept
    return code, errors.getvalue()


class WithFolder(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)


class Tables(WithFolder):
    """One generation serves all of them, since it takes a dozen seconds."""

    @classmethod
    def setUpClass(cls):
        import generate
        cls.generate = generate
        cls.tables = generate.generate(DATA)

    def test_TablesAreThoseThatTheGeneratorWrites(self):
        versions = os.path.join(FOLDER, self.generate.VERSIONS_FILE)
        self.generate.publish(self.tables, versions, False, self.folder)
        written = sorted(os.listdir(self.folder))
        self.assertEqual(
            written, sorted(name for name in os.listdir(FOLDER) if name.endswith(".cpp")))
        _, different, errors = filecmp.cmpfiles(self.folder, FOLDER, written, shallow=False)
        self.assertEqual((different, errors), ([], []))

    def test_ChangedTablesNeedANewVersion(self):
        versions = os.path.join(self.folder, "versions.txt")
        with open(versions, "w", encoding="utf-8") as file:
            file.write("1 0123456789abcdef\n")
        with self.assertRaisesRegex(self.generate.DataError, "need --new-version"):
            self.generate.publish(self.tables, versions, False, self.folder)
        self.generate.publish(self.tables, versions, True, self.folder)
        fingerprint = self.generate.fingerprint_of(self.tables)
        self.assertEqual(self.generate.read_versions(versions), [0x0123456789ABCDEF, fingerprint])

    def test_TheFingerprintCoversEveryTable(self):
        orders, sets, case, rows = self.tables
        whole = self.generate.fingerprint_of(self.tables)

        def changed(part, name, place, value):
            """The tables with one value changed."""
            part = copy.copy(part)
            if place is None:
                setattr(part, name, value)
            else:
                values = list(getattr(part, name))
                values[place] = value
                setattr(part, name, values)
            return part

        number, start, table = sets.records[0]
        wide, substitute, to, back = sets.tables[0]
        other_sets = {
            "number": changed(sets, "records", 0, (number + 99, start, table)),
            "orders": changed(sets, "records", 0, (number, start + 256, table)),
            "tables": changed(sets, "records", 0, (number, start, table + 1)),
            "Unicode": changed(sets, "records", -2, (253, 0, sets.records[-2][2])),
            "places": changed(sets, "places", 255, 0),
            "substitute": changed(sets, "tables", 0, (wide, substitute + 1, to, back)),
            "width": changed(sets, "tables", 0, (1 - wide, substitute, to, back)),
            "indexes": changed(sets, "indexes", 0, sets.indexes[0] + 1)}
        other_orders = {
            "start": changed(orders, "unicode_start", None, orders.unicode_start + 64),
            "blocks": changed(orders, "blocks", -1, orders.blocks[-1] ^ 1),
            "entry": changed(orders, "entries", 97, orders.entries[97]._replace(order=1)),
            "expansion": changed(orders, "expansions", -1, orders.expansions[-1][:-1]),
            "link": changed(orders, "links", -1, (0, 0, 0, 0)),
            "variant": changed(orders, "variant_targets", -1, 0),
            "contraction": changed(orders, "contraction_characters", -1, 0),
            "target": changed(orders, "contraction_targets", -1, 0)}
        upper, more, lower, sequence = case.forms[1]
        other_case = {
            "form": changed(case, "forms", 1, (upper + 1, more, lower, sequence)),
            "expansion": changed(case, "forms", 1, (upper, more + (65,), lower, sequence)),
            "list": changed(case, "lists", -1, ()),
            "language": changed(case, "language_cases", 0, (0, 0, 0)),
            "code set": changed(case, "set_cases", 0, (0, 0, 0))}
        row = (rows[0][0], rows[0][1] + 1, *rows[0][2:])
        others = [(f"sets: {what}", (orders, part, case, rows))
                  for what, part in other_sets.items()]
        others += [(f"orders: {what}", (part, sets, case, rows))
                   for what, part in other_orders.items()]
        others += [(f"case: {what}", (orders, sets, part, rows))
                   for what, part in other_case.items()]
        others.append(("language", (orders, sets, case, [row] + rows[1:])))
        for what, other in others:
            with self.subTest(what):
                self.assertNotEqual(
                    self.generate.fingerprint_of(self.generate.Tables(*other)), whole)


class BadData(WithFolder):
    def setUp(self):
        """Links to the published files, for which a test puts changed ones."""
        super().setUp()
        self.data = os.path.join(self.folder, "unicode")
        for part in ("", "cldr/common/dtd", "cldr/common/collation", "cldr/common/main"):
            os.makedirs(os.path.join(self.data, part), exist_ok=True)
            for entry in os.scandir(os.path.join(DATA, part)):
                if entry.is_file():
                    os.symlink(entry.path, os.path.join(self.data, part, entry.name))

    @contextlib.contextmanager
    def changed(self, name, old, new):
        """Has a file changed, and gives its path and the number of the changed line."""
        path = os.path.join(self.data, name)
        with open(path, "rb") as file:
            data = file.read()
        old = old.encode()
        self.assertIn(old, data)
        os.unlink(path)
        with open(path, "wb") as file:
            file.write(data.replace(old, new if isinstance(new, bytes) else new.encode(), 1))
        try:
            yield path, data[:data.index(old)].count(b"\n") + 1
        finally:
            os.unlink(path)
            os.symlink(os.path.join(DATA, name), path)

    @classmethod
    def setUpClass(cls):
        import generate
        cls.generator = generate
        cls.characters = generate.Characters(DATA)

    def generate(self, name):
        """Runs the generator. Where another file is bad, it need not read the characters again."""
        own = (unittest.mock.patch.object(self.generator, "Characters", lambda _: self.characters)
               if name != "UnicodeData.txt" else contextlib.nullcontext())
        with own:
            return run_generator("--data", self.data, "--output", self.folder)

    def test_ALineThatCannotBeReadIsNamed(self):
        english, croatian = "cldr/common/main/en.xml", "cldr/common/collation/hr.xml"
        for name, old, new in (
                ("allkeys.txt", "0061  ; [.20B3", "0061  ; [.20G3"),
                ("allkeys.txt", "0061  ; [.20B3.0020.0002]", "0061  ; [.20B3..0002]"),
                ("allkeys.txt", "0061  ; [.20B3.0020.0002]", "0061  ; [.20B3.0020]"),
                ("allkeys.txt", "0061  ; [.20B3", "      ; [.20B3"),
                ("UnicodeData.txt", "0062;LATIN SMALL LETTER B;", "0062;"),
                ("UnicodeData.txt", "0062;LATIN", "006X;LATIN"),
                ("UnicodeData.txt", "0062;LATIN", "0062 0063;LATIN"),
                ("UnicodeData.txt", ";;;0042;;0042", ";;;004Z;;0042"),
                ("UnicodeData.txt", ";;;0043;;0043", ";;;0043 0044;;0043"),
                ("UnicodeData.txt", ";Mn;230;NSM;;;;;N;NON-SPACING GRAVE",
                 ";Mn;2E0;NSM;;;;;N;NON-SPACING GRAVE"),
                ("UnicodeData.txt", ";Lu;0;L;0041 0300;", ";Lu;0;L;0041 03-0;"),
                ("UnicodeData.txt", ";Lu;0;L;0041 0300;", ";Lu;0;L;00C0 0300;"),
                ("Scripts.txt", "0041..005A    ; Latin", "0041..005A    Latin"),
                ("Scripts.txt", "0041..005A    ; Latin", "005A..0041    ; Latin"),
                ("SpecialCasing.txt", "00DF; 00DF;", "00DX; 00DF;"),
                ("SpecialCasing.txt", "00DF; 00DF;", "00DF 0061; 00DF;"),
                ("SpecialCasing.txt", "00DF; 00DF;", "00DF; ;"),
                (english, "<exemplarCharacters>[a b", "<exemplarCharacters>a b"),
                (english, "<exemplarCharacters>[a b", "<exemplarCharacters>[{a b"),
                (english, "<exemplarCharacters>[a b c", "<exemplarCharacters>[a b-\u0061 c"),
                (english, "<exemplarCharacters>[a b", b"<exemplarCharacters>[a \xFF b"),
                (croatian, "&C<č<<<Č<ć", "&C<č<<<Č<<<<<ć"),
                (croatian, "&C<č<<<Č<ć", "&<č<<<Č<ć"),
                (croatian, "&C<č<<<Č<ć", "&[before x]C<č<<<Č<ć"),
                (croatian, "&C<č<<<Č<ć", "[suppressContractions x]&C<č<<<Č<ć"),
                (croatian, "&C<č<<<Č<ć", b"&C<\xC4<<<")):
            with self.subTest(f"{name}: {new}"), self.changed(name, old, new) as (path, line):
                code, errors = self.generate(name)
                self.assertEqual(code, 1)
                self.assertIn(f"{path}:{line}: ", errors)

    def test_AMissingExemplarSetIsNamed(self):
        name = "cldr/common/main/en.xml"
        with self.changed(name, "<exemplarCharacters>", "<otherCharacters>") as (path, _):
            code, errors = self.generate(name)
        self.assertEqual(code, 1)
        self.assertIn(f"{path}: has no main exemplar set", errors)

    def test_AnotherVersionIsRefused(self):
        with self.changed("allkeys.txt", "@version 15.0.0", "@version 16.0.0"):
            code, errors = self.generate("allkeys.txt")
        self.assertEqual(code, 1)
        self.assertIn("allkeys.txt: is version 16.0.0", errors)
        self.assertIn("--accept-version", errors)

    def test_AMissingFileIsNamed(self):
        os.unlink(os.path.join(self.data, "allkeys.txt"))
        code, errors = self.generate("allkeys.txt")
        self.assertEqual(code, 1)
        self.assertIn("allkeys.txt: No such file", errors)

    def test_AVersionThatCannotBeReadIsNamed(self):
        versions = os.path.join(self.folder, "versions.txt")
        for text in ("1 nothing\n", "1\n", "2 0123456789abcdef\n"):
            with self.subTest(text):
                with open(versions, "w", encoding="utf-8") as file:
                    file.write("# versions\n" + text)
                code, errors = run_generator("--versions", versions, "--output", self.folder)
                self.assertEqual(code, 1)
                self.assertIn(f"{versions}:2: ", errors)


if __name__ == "__main__":
    need_data()
    result = unittest.main(argv=sys.argv[:1], exit=False, verbosity=2).result
    sys.exit(0 if result.wasSuccessful() else 1)
