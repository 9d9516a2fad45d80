#!/usr/bin/env python3
"""Writes the spreadsheets of this folder, zip and XML by hand. Run it in the folder; needs only Python 3.

runs.ods, runs.xlsx: three sheets in both formats with the same cells, so that one test reads both:
  Runs        numbers, formulas with saved results, texts, empty cells, dates, booleans, an error
  Second      a block that begins at C3
  Empty one   nothing
office.ods, office.xlsx: the same as LibreOffice 7.4 writes them; made once, not by this script, with
  soffice --headless --convert-to xlsx --outdir x runs.ods; soffice --headless --convert-to ods --outdir x runs.xlsx
commas.ods: texts with decimal commas beside numbers.
protected.*: only what tells that a file is encrypted. long.ods: 70,000 equal
rows. The others are small files that ask for huge sheets.
"""
import zipfile


def archive(name, entries, compression=zipfile.ZIP_DEFLATED):
    with zipfile.ZipFile(name, "w") as out:
        for entry, text in entries:
            info = zipfile.ZipInfo(entry, (2026, 1, 1, 0, 0, 0))
            info.compress_type = zipfile.ZIP_STORED if entry == "mimetype" else compression
            out.writestr(info, text)


HEAD = '<?xml version="1.0" encoding="UTF-8"?>\n'
MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
OFFICE_REL = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
PACKAGE = "http://schemas.openxmlformats.org/package/2006"


def xlsx(name, sheets, texts, compression=zipfile.ZIP_DEFLATED):
    """`sheets`: pairs of a name and the XML between <sheetData> tags."""
    types = "".join(
        f'<Override PartName="/xl/worksheets/sheet{i}.xml" '
        'ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"/>'
        for i in range(1, len(sheets) + 1))
    entries = [
        ("[Content_Types].xml", HEAD + f'<Types xmlns="{PACKAGE}/content-types">'
         '<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
         '<Default Extension="xml" ContentType="application/xml"/><Override PartName="/xl/workbook.xml" '
         'ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"/>'
         '<Override PartName="/xl/sharedStrings.xml" '
         'ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml"/>'
         f'{types}</Types>'),
        ("_rels/.rels", HEAD + f'<Relationships xmlns="{PACKAGE}/relationships"><Relationship Id="rId1" '
         f'Type="{OFFICE_REL}/officeDocument" Target="xl/workbook.xml"/></Relationships>'),
        ("xl/workbook.xml", HEAD + f'<workbook xmlns="{MAIN}" xmlns:r="{OFFICE_REL}"><sheets>' + "".join(
            f'<sheet name="{sheet}" sheetId="{i}" r:id="rId{i}"/>' for i, (sheet, _) in enumerate(sheets, 1)) +
         '</sheets></workbook>'),
        ("xl/_rels/workbook.xml.rels", HEAD + f'<Relationships xmlns="{PACKAGE}/relationships">' + "".join(
            f'<Relationship Id="rId{i}" Type="{OFFICE_REL}/worksheet" Target="worksheets/sheet{i}.xml"/>'
            for i in range(1, len(sheets) + 1)) +
         f'<Relationship Id="rId99" Type="{OFFICE_REL}/sharedStrings" Target="sharedStrings.xml"/></Relationships>'),
        ("xl/sharedStrings.xml", HEAD + f'<sst xmlns="{MAIN}">' + "".join(f"<si>{text}</si>" for text in texts) +
         '</sst>')]
    for i, (_, cells) in enumerate(sheets, 1):
        entries.append((f"xl/worksheets/sheet{i}.xml",
                        HEAD + f'<worksheet xmlns="{MAIN}"><sheetData>{cells}</sheetData></worksheet>'))
    archive(name, entries, compression)


def ods(name, tables, manifest="", compression=zipfile.ZIP_DEFLATED):
    """`tables`: pairs of a name and the XML of the rows."""
    oasis = "urn:oasis:names:tc:opendocument:xmlns"
    body = "".join(f'<table:table table:name="{table}">{rows}</table:table>' for table, rows in tables)
    archive(name, [
        ("mimetype", "application/vnd.oasis.opendocument.spreadsheet"),
        ("META-INF/manifest.xml", HEAD + f'<manifest:manifest xmlns:manifest="{oasis}:manifest:1.0" '
         'manifest:version="1.2"><manifest:file-entry manifest:full-path="/" '
         'manifest:media-type="application/vnd.oasis.opendocument.spreadsheet"/>'
         f'<manifest:file-entry manifest:full-path="content.xml" manifest:media-type="text/xml">{manifest}'
         '</manifest:file-entry></manifest:manifest>'),
        ("content.xml", HEAD + f'<office:document-content xmlns:office="{oasis}:office:1.0" '
         f'xmlns:table="{oasis}:table:1.0" xmlns:text="{oasis}:text:1.0" xmlns:of="{oasis}:of:1.2" '
         'xmlns:calcext="urn:org:documentfoundation:names:experimental:calc:xmlns:calcext:1.0" '
         f'office:version="1.2"><office:body><office:spreadsheet>{body}</office:spreadsheet></office:body>'
         '</office:document-content>')], compression)


def ods_cell(kind, value="", text="", more=""):
    attribute = {"float": "value", "date": "date-value", "boolean": "boolean-value", "percentage": "value",
                 "currency": "value"}.get(kind)
    said = f' office:{attribute}="{value}"' if attribute else ""
    return (f'<table:table-cell office:value-type="{kind}"{said}{more}>' +
            (f"<text:p>{text}</text:p>" if text else "") + "</table:table-cell>")


def ods_row(*cells, more=""):
    return f"<table:table-row{more}>{''.join(cells)}</table:table-row>"


EMPTY = "<table:table-cell/>"
TEXTS = ["<t>time</t>", "<t>signal</t>", "<t>when</t>", "<t>valid</t>", "<t>note</t>",
         '<r><t>half-</t></r><r><t xml:space="preserve">life µ</t></r>', "<t> 7.5 </t>"]

xlsx("runs.xlsx", [
    ("Runs",
     '<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c><c r="C1" t="s"><v>2</v></c>'
     '<c r="D1" t="s"><v>3</v></c><c r="E1" t="s"><v>4</v></c></row>'
     '<row r="2"><c r="A2"><v>1</v></c><c r="B2"><v>0.1</v></c><c r="C2"><v>43845</v></c>'
     '<c r="D2" t="b"><v>1</v></c><c r="E2" t="s"><v>5</v></c></row>'
     '<row r="3"><c r="A3"><f>A2+1</f><v>2</v></c><c r="B3"><f>B2*-2.5E-7</f><v>-2.4999999999999999E-8</v></c>'
     '<c r="C3"><v>43846.75</v></c><c r="D3" t="b"><v>0</v></c><c r="E3" t="str"><f>"a"&amp;"b"</f><v>ab</v></c></row>'
     '<row r="5"><c r="A5"><v>4</v></c><c r="B5" t="e"><f>1/0</f><v>#DIV/0!</v></c><c r="C5"><f>C2</f></c>'
     '<c r="D5" t="b"><f>TRUE()</f><v>1</v></c><c r="E5" t="s"><v>6</v></c></row>'
     '<row r="6"><c r="A6"><v>5</v></c><c r="B6"><v>123456789.123456789</v></c><c r="C6"><v>0.25</v></c>'
     '<c r="E6" t="inlineStr"><is><t>in place</t></is></c></row>'),
    ("Second",
     '<row r="3"><c r="C3"><f t="array" ref="C3:D4">{1,2;3,4}</f><v>1</v></c><c r="D3"><v>2</v></c></row>'
     '<row r="4"><c r="C4"><v>3</v></c><c r="D4"><v>4</v></c></row>'
     '<row r="5"><c r="C5"><f t="shared" ref="C5:C6" si="0">C3*2</f><v>2</v></c></row>'
     '<row r="6"><c r="C6"><f t="shared" si="0"/><v>6</v></c></row>'),
    ("Empty one", "")], TEXTS)

ods("runs.ods", [
    ("Runs",
     ods_row(*[ods_cell("string", text=text) for text in ("time", "signal", "when", "valid", "note")]) +
     ods_row(ods_cell("float", "1", "1"), ods_cell("float", "0.1", "0.1"), ods_cell("date", "2020-01-15", "15/01/20"),
             ods_cell("boolean", "true", "TRUE"), ods_cell("string", text="half-<text:span>life µ</text:span>")) +
     ods_row(ods_cell("float", "2", "2", ' table:formula="of:=[.A2]+1"'),
             ods_cell("float", "-2.5E-8", "0", ' table:formula="of:=[.B2]*-2.5E-7"'),
             ods_cell("date", "2020-01-16T18:00:00", "16/01/20 18:00"), ods_cell("boolean", "false", "FALSE"),
             ods_cell("string", text="ab", more=' table:formula="of:=&quot;a&quot;&amp;&quot;b&quot;"')) +
     ods_row('<table:table-cell table:number-columns-repeated="5"/>') +
     ods_row(ods_cell("float", "4", "4"),
             ods_cell("string", text="#DIV/0!", more=' table:formula="of:=1/0" office:string-value="" '
                      'calcext:value-type="error"'),
             EMPTY, ods_cell("boolean", "true", "TRUE", ' table:formula="of:=TRUE()"'),
             ods_cell("string", text="7.5")) +
     ods_row(ods_cell("currency", "5", "5.00 EUR"), ods_cell("float", "123456789.123456789", "123456789.12"),
             ods_cell("percentage", "0.25", "25%"), EMPTY, ods_cell("string", text="in place")) +
     ods_row('<table:table-cell table:number-columns-repeated="16384"/>', more=' table:number-rows-repeated="1048570"')),
    ("Second",
     ods_row(EMPTY, more=' table:number-rows-repeated="2"') +
     ods_row('<table:table-cell table:number-columns-repeated="2"/>',
             ods_cell("float", "1", "1", ' table:formula="of:={1;2|3;4}" table:number-matrix-columns-spanned="2" '
                      'table:number-matrix-rows-spanned="2"'), ods_cell("float", "2", "2")) +
     ods_row('<table:table-cell table:number-columns-repeated="2"/>', ods_cell("float", "3", "3"),
             ods_cell("float", "4", "4")) +
     ods_row('<table:table-cell table:number-columns-repeated="2"/>', ods_cell("float", "2", "2")) +
     ods_row('<table:table-cell table:number-columns-repeated="2"/>', ods_cell("float", "6", "6"))),
    ("Empty one", "")])

ods("commas.ods", [("Sheet1", ods_row(*[ods_cell("string", text=text) for text in ("t", "p", "note")]) + "".join(
    ods_row(ods_cell("float", t), ods_cell("string", text=p), ods_cell("string", text=note))
    for t, p, note in (("0.5", "1,5", "a, b"), ("1.5", "-,25", "1,5"), ("2", "NA", ""))))])

rows = ods_row(ods_cell("float", "1"))
ods("protected.ods", [("Sheet1", rows)], '<manifest:encryption-data manifest:checksum="AAAA"/>')
with open("protected.xlsx", "wb") as out:  # a compound file with the directory entry of an encrypted package
    out.write(bytes.fromhex("D0CF11E0A1B11AE1") + bytes(504) + "EncryptedPackage".encode("utf-16-le") + bytes(480))

ods("repeated.ods", [("Sheet1", ods_row(
    ods_cell("float", "1", more=' table:number-columns-repeated="16384"'), more=' table:number-rows-repeated="1048576"'))])
ods("long.ods", [("Sheet1", ods_row(ods_cell("float", "1"), ods_cell("float", "2"),
                                    more=' table:number-rows-repeated="70000"'))])
ods("endless.ods", [("Sheet1", ods_row(
    ods_cell("string", text="t" * 200), more=' table:number-rows-repeated="99999999999999999999"'))])
xlsx("far.xlsx", [("Sheet1", '<row r="1048576">' + "".join(
    f'<c r="{a}{b}1048576"><v>1</v></c>' for a in "ABC" for b in "ABCDEFGHIJKLMNOPQRSTUVWXYZ") + '</row>')], TEXTS)
xlsx("rows.xlsx", [("Sheet1", '<row r="4000000000"><c r="A4000000000"><v>1</v></c></row>')], TEXTS)
entities = "".join(f'<!ENTITY e{i} "{f"&e{i - 1};" * 10 if i else "lol"}">' for i in range(10))
archive("entities.ods", [("content.xml", f"<!DOCTYPE x [{entities}]><x>&e9;</x>")])
