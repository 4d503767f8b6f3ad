// SPDX-License-Identifier: GPL-3.0-or-later
#include "document_dump.h"
#include "platform/richtext/rich_text.h"

#include <QBuffer>
#include <QImage>
#include <QTest>

/// What the reader makes of RTF as word processors and old rich-text controls write it.
class Test_Rtf_Reader : public QObject
{
    Q_OBJECT

private slots:
    void text_data();
    void text();
    void looks_data();
    void looks();
    void pictures_data();
    void pictures();
    void tells_what_is_not_kept_data();
    void tells_what_is_not_kept();
    void refuses_other_bytes();
};

namespace
{
const QByteArray fonts =
    "{\\fonttbl{\\f0\\fnil\\fcharset0 Base;}{\\f1\\fcharset134 \\'cb\\'ce\\'cc\\'e5;}"
    "{\\f2\\fcharset128 MS Gothic;}{\\f3\\fcharset204 Cyr;}{\\f4\\fcharset136 Ming;}"
    "{\\f5\\fcharset129 Batang;}{\\f6\\fcharset238{\\*\\falt Other}East;}{\\f7\\fcharset161 Greek;}"
    "{\\f8\\fcharset178 Arabic;}{\\f9\\fcharset2 Symbol;}{\\f10\\fcharset1 Any;}"
    "{\\f11\\fnil\\cpg850 Dos;}{\\f12\\fcharset2 Wingdings;}{\\f13\\fcharset2 Wingdings 3;}}";
const QByteArray colors = "{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}";
const QByteArray lists =
    "{\\*\\listtable{\\list{\\listlevel\\levelnfc23{\\leveltext\\'01\\u-3913 ?;}{\\levelnumbers;}\\fi-360\\li720}"
    "{\\listlevel\\levelnfc4{\\leveltext\\'03(\\'01);}{\\levelnumbers\\'02;}\\fi-360\\li1440}\\listid77}"
    "{\\list{\\listlevel\\levelnfc0{\\leveltext\\'02\\'00.;}{\\levelnumbers\\'01;}\\fi-360\\li720}\\listid78}"
    "{\\list{\\listlevel\\levelnfc1\\levelstartat4{\\leveltext\\'02\\'00.;}}{\\listlevel\\levelnfc0{\\leveltext\\'03\\'"
    "00-\\'01;}}"
    "{\\listlevel\\levelnfc0{\\leveltext\\'05\\'00-\\'01.\\'02;}}\\listid79}"
    "{\\list{\\listlevel\\levelnfc23{\\leveltext\\'01\\u-3880 ?;}\\f12}{\\listlevel\\levelnfc23{\\leveltext\\'01o;}}"
    "{\\listlevel\\levelnfc37{\\leveltext\\'02\\'02\\u12289?;}}{\\listlevel\\levelnfc22{\\leveltext\\'02\\u31532?\\'03;"
    "}}"
    "{\\listlevel\\levelnfc0{\\leveltext\\'00;}}\\listid80}}"
    "{\\*\\listoverridetable{\\listoverride\\listid77\\listoverridecount0\\ls1}"
    "{\\listoverride\\listid78\\listoverridecount0\\ls5}{\\listoverride\\listid79\\listoverridecount0\\ls6}"
    "{\\listoverride\\listid79\\listoverridecount1{\\lfolevel\\listoverridestartat\\levelstartat30}\\ls7}"
    "{\\listoverride\\listid80\\listoverridecount0\\ls8}{\\listoverride\\listid78\\listoverridecount0\\ls9}}";

QByteArray Whole(const QByteArray &body)
{
    return "{\\rtf1\\ansi\\ansicpg1252\\deff0" + fonts + colors + lists + body + "}";
}

void Prepare(QTextDocument &document)
{
    document.setDefaultFont(QFont(QStringLiteral("Base"), 12));
}
} // namespace

void Test_Rtf_Reader::text_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, const char *body, const QString &shown) {
        QTest::newRow(name) << QByteArray(body) << shown;
    };
    row("escapes", "a\\\\b\\{c\\}\\~d\\-e\\_f", u"a\\b{c} d\u00ADe\u2011f"_qs);
    row("line ends mean nothing", "one\r\n two\\par\nthree\\\nfour", u"one two\nthree\nfour"_qs);
    row("signs", "\\lquote a\\rquote\\ldblquote b\\rdblquote\\endash\\emdash\\bullet\\tab\\line c",
        u"‘a’“b”–—•\t\nc"_qs);
    row("the last mark ends the text", "one\\par two\\par\r\n", u"one\ntwo"_qs);
    row("Chinese in pairs", "\\f1 \\'d6\\'d0\\'ce\\'c4", u"中文"_qs);
    row("pair cut by a line end", "\\f1 \\'d6\r\n\\'d0", u"中"_qs);
    row("pair with a plain second byte", "\\f2 \\'83A\\'83\\'5c\\'83\\\\", u"アソソ"_qs);
    row("Chinese in an ANSI font", "{\\ansicpg936\\f0 \\'d6\\'d0 caf\\'e9 x}", u"中 café x"_qs);
    row("Russian", "\\f3 \\'cc\\'e8\\'f0", u"Мир"_qs);
    row("Big5, Korean", "\\f4 \\'a4\\'a4\\f5 \\'b0\\'a1", u"中가"_qs);
    row("Latin 2, Greek, Arabic", "\\f6 \\'b3\\f7 \\'e1\\f8 \\'c7", u"łαا"_qs);
    row("document's code page", "\\ansicpg1251\\f10 \\'cc", u"М"_qs);
    row("code page of a font", "\\f11 \\'82", u"é"_qs);
    row("symbol font", "\\f9 a\\'b7\\u-3999?", u"α•α"_qs);
    row("symbol font of another set", "\\f12 u\\f13 u", u"◆\uF075"_qs);
    row("Unicode with stand-ins", "\\uc1\\u20013?\\u25991\\'3f.\\uc2\\u26085\\'93\\'fa.\\uc0\\u26412.",
        u"中文.日.本."_qs);
    row("skip ends with the group", "{\\uc4\\u20013?}text", u"中text"_qs);
    row("stand-in left out", "\\u20013\\par b", u"中\nb"_qs);
    row("stand-ins that are words", "\\u8226\\bullet x\\u160\\~y\\u8211{}\\endash z", u"•x y––z"_qs);
    row("surrogates", "\\u-10179?\\u-8704?.\\u-10179?.\\u-8704?", u"\U0001F600.\uFFFD.\uFFFD"_qs);
    row("both halves of \\upr", "{\\upr{A?}{\\*\\ud{A\\u20013?}}}b", u"A中b"_qs);
    row("hidden text", "a{\\v secret}b", u"ab"_qs);
    row("unknown words and groups", "a\\foo12 b{\\*\\bar c {d}}{\\foo e}", u"abe"_qs);
    row("\\bin holds anything", "a{\\*\\bar\\bin3 }}}}b", u"ab"_qs);
    row("sign by its number",
        "{\\field{\\*\\fldinst SYMBOL 183 \\\\f \"Symbol\" \\\\s 9}{\\fldrslt\\f9\\fs18}}"
        "{\\field{\\*\\fldinst{SYMBOL 0x4E2D \\\\u}}}{\\field{\\*\\fldinst SYMBOL 233}{\\fldrslt ?}}",
        u"•中é"_qs);
    row("field's result", "{\\field{\\*\\fldinst PAGE}{\\fldrslt 7}}.", u"7."_qs);
    row("footnote", "a{\\footnote\\pard\\tab  one\\par two}b", u"a [one two]b"_qs);
    row("header and information", "{\\header h\\par}{\\info{\\title t}}a", u"a"_qs);
    row("text of a shape", "{\\shp{\\*\\shpinst{\\sp{\\sn a}{\\sv 1}}{\\shptxt in\\par}}{\\shprslt in}}out",
        u"in\nout"_qs);
    row("object's result", "{\\object\\objemb{\\*\\objdata 0102}{\\result shown}}", u"shown"_qs);
    row("list text is not text", "{\\listtext\\'b7\\tab}\\ls1 a\\par\\pard{\\pntext 1.}{\\*\\pn\\pndec}b", u"a\nb"_qs);
    row("list text that is text", "{\\listtext\\pard {\\b\\tab }{\\b item}{\\par}\r\n}\\pard b", u"\titem\nb"_qs);
    row("nothing follows the last brace", "a}b{c}", u"a"_qs);
    row("unfinished row", "\\trowd\\cellx100\\intbl a\\cell b", u"\na\nb\n"_qs);
}

void Test_Rtf_Reader::text()
{
    QFETCH(QByteArray, body);
    QTextDocument document;
    Prepare(document);
    QVERIFY(Rich_Text::Read_Rtf(Whole(body), document));
    QTEST(Rich_Text::Shown_Text(document).replace(u'\u2028', u'\n'), "shown");
}

void Test_Rtf_Reader::looks_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("dump");
    const auto row = [](const char *name, const QByteArray &body, const QString &dump) {
        QTest::newRow(name) << body << dump;
    };
    row("attributes", "\\b b\\b0{\\i i}\\strike s\\plain\\super u\\nosupersub\\sub d\\plain\\fs40 z",
        u"P: {b}b{i}i{strike}s{super}u{sub}d{20pt}z"_qs);
    row("underlines", "\\ul a\\uldash b\\uld c\\uldashd d\\uldashdd e\\ulwave f\\uldb g\\ulnone h",
        u"P: {u1}a{u2}b{u3}c{u4}d{u5}e{u6}f{u1 kind=7}g{}h"_qs);
    row("colours", "\\cf1 r\\cf2\\highlight1 b\\cf0\\highlight0 n\\chcbpat2 c",
        u"P: {color=#ff0000}r{color=#0000ff back=#ff0000}b{}n{back=#0000ff}c"_qs);
    row("fonts", "\\f1 a\\f2 b\\f6 c", u"P: {宋体}a{MS Gothic}b{East}c"_qs);
    row("properties of East Asian and right-to-left text",
        "\\rtlch\\ab\\af8 \\ltrch\\loch\\f6\\hich\\af6\\dbch\\ai\\af1\\loch a\\dbch \\'d6\\'d0\\rtlch \\'c7\\dbch\\f2 "
        "\\'83A",
        u"P: {East}a{宋体 i}中{Arabic b}ا{MS Gothic i}ア"_qs);
    row("styles build on styles",
        "{\\stylesheet{\\s1\\b\\qc One;}{\\s2\\sbasedon1\\i Two;}{\\*\\cs3\\cf1 Three;}}\\pard\\plain\\s2 a{\\cs3 "
        "b}\\par"
        "\\pard\\plain c",
        u"P center: {b i}a{b i color=#ff0000}b\nP: c"_qs);
    row("paragraphs",
        "\\pard\\qr\\li150\\ri300\\fi-150\\sb450\\sa600\\sl360\\slmult1 "
        "a\\par\\pard\\qj\\sl-300\\slmult0\\cbpat1\\rtlpar b\\par"
        "\\pard\\tx1500\\tqr\\tx3000\\outlinelevel1\\pagebb c\\par\\pard d",
        u"P right left=10 right=20 first=-10 before=30 after=40 line=150/1: a\nP justify line=20/2 back=#ff0000 rtl: "
        u"b\n"
        u"P heading=2 page tab=100/0 tab=200/1: c\nP: d"_qs);
    row("alignment from right to left", "\\rtlpar a\\par\\qr b\\par\\ql c\\par\\pard\\ql d",
        u"P rtl: a\nP rtl: b\nP right rtl: c\nP: d"_qs);
    row("direction by the text, or said", "\\f8 \\'c7\\par\\pard\\ltrpar\\f8 \\'c7\\par\\pard a",
        u"P rtl: {Arabic}ا\nP: {Arabic}ا\nP: {Arabic}a"_qs);
    row("page breaks", "a\\page b\\par\\sect\\sectd\\sbknone c\\sect\\sectd d", u"P: a\nP page: b\nP: c\nP page: d"_qs);
    row("lists of two levels",
        "\\pard\\ls1\\ilvl0\\fi-360\\li720 a\\par\\ilvl1\\li1440 b\\par c\\par\\ilvl0\\li720 d\\par\\ilvl1\\li1440 "
        "e\\par"
        "\\pard\\ls5 f",
        u"P list1(-1,1): a\nP list2(-5,2,(#)): b\nP list2(-5,2,(#)): c\nP list1(-1,1): d\nP list3(-5,2,(#)): "
        u"e\n"
        u"P list4(-4,1,#.): f"_qs);
    row("old lists",
        "\\pard{\\pntext\\f9\\'b7\\tab}{\\*\\pn\\pnlvlblt\\pnf9\\pnindent0{\\pntxtb\\'b7}}\\fi-200\\li200 a\\par"
        "{\\pntext\\'b7}b\\par\\pard c\\par\\pard{\\*\\pn\\pnlvlbody\\pndec{\\pntxta )}}d\\par e",
        u"P left=-34.6667 list1(-1,1) ofItem=-200: a\nP left=-34.6667 list1(-1,1) ofItem=-200: b\nP: c\nP list2(-4,1,#)): d\nP list2(-4,1,#)): e"_qs);
    row("numbers of several levels",
        "\\pard\\ls6\\ilvl0 a\\par b\\par\\ilvl1 c\\par d\\par\\pard between\\par\\pard\\ls6\\ilvl2 e\\par\\ilvl0 "
        "f\\par\\ilvl1 g\\par\\pard\\ls7 h",
        u"P list1(1,IV.): a\nP list1(1,V.): b\nP list2(2,V-1): c\nP list2(2,V-2): d\nP: between\n"
        u"P list3(3,V-2.1): e\nP list1(1,VI.): f\nP list4(2,VI-1): g\nP list5(1,XXX.): h"_qs);
    row("other signs and numbers",
        "\\pard\\ls8\\ilvl0 a\\par\\ilvl1 b\\par\\ilvl2 c\\par\\ilvl3 d\\par\\ilvl4 e\\par"
        "\\pard{\\*\\pn\\pnlvlbody\\pndec\\pnstart4{\\pntxta )}}f\\par g",
        u"P list1(1,➢): a\nP list2(-2,2): b\nP list3(3,一、): c\nP list4(4,第01): d\nP: e\n"
        u"P list5(1,4)): f\nP list5(1,5)): g"_qs);
    row("link",
        "{\\field{\\*\\fldinst{HYPERLINK \"http://a.b/c\" \\\\o \"tip\"}}{\\fldrslt{\\ul x}}}y"
        "{\\field{\\*\\fldinst HYPERLINK \\\\l \"here\"}{\\fldrslt z}}",
        u"P: {u1 ->http://a.b/ctip}x{}y{->#here}z"_qs);
    row("hidden and deleted text",
        "a{\\v b{\\i c}\\par d\\footnote\\pard\\plain e}{\\deleted "
        "f}g\\par{\\v{\\pict\\wmetafile8\\picwgoal15\\pichgoal30 "
        "00}}\\par h",
        u"P: a<hidden8 b>{i}<hidden8 c>{}<hidden8 |d [e]><hidden64 f>g\nP: <hidden8 <picture w=1 h=2 93b885ad>>\nP: h"_qs);
    row("bookmarks",
        "{\\*\\bkmkstart one}{\\*\\bkmkstart \\u20108?}a{\\*\\bkmkend one}b\\par{\\*\\bkmkstart end}\\par c",
        u"P: @one,二ab\nP: @end\nP: c"_qs);
    row("indents of lists",
        "\\pard\\ls1\\ilvl0\\fi-420\\li420 a\\par\\ilvl1\\fi-420\\li840 b\\par\\pard\\ls1\\fi0\\li0 c\\par\\pard\\ls1 "
        "d",
        u"P left=-20 list1(-1,1) ofItem=-420: a\nP left=-40 list2(-5,2,(#)) ofItem=-420: b\nP left=-48 first=24 list1(-1,1): c\nP list1(-1,1): d"_qs);
    row("levels of old lists",
        "{\\*\\pn\\pnlvl1\\pndec{\\pntxta .}}\\fi-400\\li400 a\\par\\pard{\\*\\pn\\pnlvl2\\pnlcltr{\\pntxta "
        ")}}\\fi-400\\li800 "
        "b\\par\\pard{\\*\\pn\\pnlvlcont}\\li400 "
        "c\\par\\pard{\\*\\pn\\pnlvl1\\pndec{\\pntxta .}}\\fi-400\\li400 d",
        u"P left=-21.3333 list1(-4,1,#.) ofItem=-400: a\nP left=-42.6667 list2(-5,2,#)) ofItem=-400: b\nP left=26.6667: c\nP left=-21.3333 list1(-4,1,#.) ofItem=-400: d"_qs);
    row("one list by two numbers", "\\pard\\ls5 a\\par\\pard between\\par\\pard\\ls9 b",
        u"P list1(-4,1,#.): a\nP: between\nP list1(-4,1,#.): b"_qs);
    row("tabs in order, leaders, what stays together", "\\pard\\keepn\\tldot\\tqr\\tx3000\\tx1500\\tx1500 a",
        u"P tab=100/0 tab=200/1 leaders=0001 keep: a"_qs);
    row("shading", "\\pard\\shading2500 a\\par\\cfpat1\\cbpat2\\shading5000 b",
        u"P back=#bfbfbf: a\nP back=#7f007f: b"_qs);
    row("text box in a cell",
        "\\trowd\\cellx3000\\pard\\intbl a{\\shp{\\*\\shpinst{\\shptxt\\pard in\\par}}}b\\cell\\row\\pard c",
        u"P: \nT 1x1 w200/1\nC 0,0\n P: in\n P: ab\nP: c"_qs);
    row("table on a new page", "a\\par\\page\\trowd\\trleft300\\cellx3300\\intbl b\\cell\\row\\pard c",
        u"P: a\nT 1x1 left=20 page w200/1\nC 0,0\n P: b\nP: c"_qs);
    row("properties of formulas", "{\\mmath{\\*\\moMath{\\mr a}{\\mrad{\\mradPr{\\mdegHide 1}}{\\me b}}}}",
        u"P: ab"_qs);
    row("merged cells",
        "\\trowd\\clvmgf\\cellx1500\\clmgf\\cellx3000\\clmrg\\clcbpat1\\cellx4500\\pard\\intbl a\\cell "
        "b\\cell\\cell\\row"
        "\\trowd\\clvmrg\\cellx1500\\clcbpat1\\cellx3000\\clvertalc\\cellx4500\\pard\\intbl\\cell c\\cell "
        "d\\cell\\row\\pard e",
        u"P: \nT 2x3 w100/1 w100/1 w100/1\nC 0,0 2x1\n P: a\nC 0,1 1x2\n P: b\nC 1,1 back=#ff0000\n P: c\n"
        u"C 1,2 middle\n P: d\nP: e"_qs);
    row("rows with edges of their own",
        "\\trowd\\cellx3000\\intbl a\\cell\\row\\trowd\\cellx1500\\cellx3005\\intbl b\\cell c\\cell\\row",
        u"P: \nT 2x2 w100/1 w100/1\nC 0,0 1x2\n P: a\nC 1,0\n P: b\nC 1,1\n P: c\nP: "_qs);
    const QByteArray line = "\\brdrs\\brdrw30\\brdrcf2";
    const QByteArray box = "\\clbrdrt" + line + "\\clbrdrl" + line + "\\clbrdrb" + line + "\\clbrdrr" + line;
    row("a table's borders and padding",
        "x\\par\\trowd\\trgaph75\\trhdr\\trqc" + box + "\\cellx1500" + QByteArray(box).replace("\\clbrdrl" + line, "") +
            "\\cellx3000\\intbl a\\cell b\\cell\\row\\pard y",
        u"P: x\nT 1x2 border=2 padding=5 header=1 center line=#0000ff w100/1 w100/1\nC 0,0\n P: a\nC 0,1\n P: b\nP: y"_qs);
    row("cells of their own borders and padding",
        "\\trowd\\trbrdrt\\brdrs\\brdrw15\\trbrdrv\\brdrdot\\clbrdrl\\brdrnone\\clbrdrb\\brdrdb\\brdrw15\\brdrcf1"
        "\\clpadl150\\clpadfl3\\clpadt75\\clpadft3\\cellx1500\\intbl a\\cell\\row\\pard",
        u"P: \nT 1x1 w100/1\nC 0,0 top=1/3+10 bottom=3/4 =#ff0000+5 right=0.666667/1\n P: a\nP: "_qs);
    row("borders of paragraphs",
        "\\brdrt\\brdrdash\\brdrw30\\brsp75\\brdrcf1 a\\par\\pard\\box\\brdrs\\brdrw15 b\\par\\pard c",
        u"P top=2/2 =#ff0000+5: a\nP top=1/3+0 bottom=1/3+0 left=1/3+0 right=1/3+0: b\nP: c"_qs);
    row("rules", "a\\par\\pard\\brdrb\\brdrs\\brdrw15\\par\\brdrcf2\\par b\\par",
        u"P: a\nP rule: \nP back=#0000ff rule: \nP bottom=1/3 =#0000ff+0: b"_qs);
    row("table in a table",
        "\\trowd\\cellx3000\\pard\\intbl a\\par\\pard\\intbl\\itap2 "
        "b\\nestcell{\\*\\nesttableprops\\trowd\\cellx1500\\nestrow}"
        "{\\nonesttables\\par}\\pard\\intbl c\\cell\\row\\pard d",
        u"P: \nT 1x1 w200/1\nC 0,0\n P: a\n T 1x1 w100/1\n C 0,0\n  P: b\n P: c\nP: d"_qs);
}

void Test_Rtf_Reader::looks()
{
    QFETCH(QByteArray, body);
    QTextDocument document;
    Prepare(document);
    QVERIFY(Rich_Text::Read_Rtf(Whole(body), document));
    QFETCH(QString, dump);
    QCOMPARE(Document_Dump::Of(document), dump);
    QVERIFY(!document.isModified() && document.isUndoRedoEnabled() && !document.isUndoAvailable());
    QTextDocument again;
    Prepare(again);
    QVERIFY(Rich_Text::Read_Rtf(Rich_Text::Write_Rtf(document), again));
    QCOMPARE(Document_Dump::Of(again), dump);
}

void Test_Rtf_Reader::pictures_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<bool>("decodes");
    const auto encoded = [](const char *format) {
        QImage image(3, 2, QImage::Format_RGB32);
        image.fill(Qt::green);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        image.save(&buffer, format);
        return bytes;
    };
    const QByteArray png = encoded("PNG").toHex(), bitmap = encoded("BMP").sliced(14);
    // a metafile whose one record stretches a bitmap, and one that only draws
    const auto record = [](const QByteArray &rest) {
        const auto words = static_cast<quint32>(rest.size() + 4) / 2;
        return QByteArray(reinterpret_cast<const char *>(&words), 4) + rest;
    };
    const QByteArray head("\1\0\11\0\0\3\0\0\0\0\0\0\0\0\0\0\0\0", 18), end = record(QByteArray(2, '\0'));
    const QByteArray stretching = head + record(QByteArray("\x43\x0F", 2) + QByteArray(22, '\0') + bitmap) + end;

    const auto row = [](const char *name, const QByteArray &group, QSizeF size, bool decodes = true) {
        QTest::newRow(name) << group << size << decodes;
    };
    row("own size", "{\\pict\\pngblip " + png + "}", {3, 2});
    row("goal and scale", "{\\pict\\picwgoal1500\\pichgoal3000\\picscalex50\\pngblip\n" + png + "}", {50, 200});
    row("digits on many lines", "{\\pict\\pngblip " + QByteArray(png).insert(31, "\r\n").insert(9, " \r\n") + "}",
        {3, 2});
    row("JPEG in \\bin",
        "{\\pict\\jpegblip\\bin" + QByteArray::number(encoded("JPG").size()) + " " + encoded("JPG") + "}", {3, 2});
    row("bitmap", "{\\pict\\dibitmap0 " + bitmap.toHex() + "}", {3, 2});
    row("device bitmap", "{\\pict\\wbitmap0\\picw8\\pich1\\wbmbitspixel1\\wbmwidthbytes2 aa00}", {8, 1});
    row("bitmap in a metafile", "{\\pict\\wmetafile8\\picwgoal450\\pichgoal300 " + stretching.toHex() + "}", {30, 20});
    row("metafile that draws", "{\\pict\\wmetafile8\\picw2540\\pich1270 " + (head + end).toHex() + "}", {96, 48},
        false);
    row("once of two forms",
        "{\\*\\shppict{\\pict\\pngblip " + png + "}}{\\nonshppict{\\pict\\wmetafile8 " + end.toHex() + "}}", {3, 2});
    row("cropped", "{\\pict\\picwgoal1500\\pichgoal3000\\piccropl300\\piccropb1500\\picscalex50\\pngblip " + png + "}",
        {40, 100});
    row("cropped to nothing", "{\\pict\\piccropl-99\\piccropr2000000000\\piccropt45\\pngblip " + png + "}", {3, 2});
    row("false sizes", "{\\pict\\picw-9\\pich-9\\picwgoal-2147483648\\pichgoal-5\\picscalex-7\\pngblip " + png + "}",
        {3, 2});
    row("huge sizes", "{\\pict\\picwgoal2147483647\\pichgoal99999999\\picscalex2000000000\\pngblip " + png + "}",
        {2112, 2112});
    row("within a shape", "{\\shp{\\*\\shpinst{\\sp{\\sn pib}{\\sv{\\pict\\pngblip " + png + "}}}}}", {3, 2});
}

void Test_Rtf_Reader::pictures()
{
    QFETCH(QByteArray, group);
    QTextDocument document;
    Prepare(document);
    QVERIFY(Rich_Text::Read_Rtf(Whole("a" + group + "b"), document));
    QCOMPARE(document.toPlainText(), u"a\uFFFCb"_qs);
    QTextCursor cursor(&document);
    cursor.setPosition(2);
    const QTextImageFormat format = cursor.charFormat().toImageFormat();
    QTEST(QSizeF(format.width(), format.height()), "size");
    const QByteArray bytes = document.resource(QTextDocument::ImageResource, QUrl(format.name())).toByteArray();
    QVERIFY(!bytes.isEmpty());
    QTEST(!QImage::fromData(bytes).isNull(), "decodes");
}

void Test_Rtf_Reader::tells_what_is_not_kept_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("losses");
    const QByteArray picture = "{\\pict\\pngblip 89}";
    QTest::newRow("nothing") << "{\\header a{\\field{\\*\\fldinst PAGE}{\\fldrslt 1}}}{\\field{\\*\\fldinst HYPERLINK "
                                "\"a\"}{\\fldrslt b}}{\\field{\\*\\fldinst SYMBOL 65}{\\fldrslt}}" +
                                    picture
                             << 0;
    QTest::newRow("picture of a header") << "{\\header " + picture + "}" << int(Rich_Text::Header_Pictures);
    QTest::newRow("sections") << QByteArray("a\\sect\\sectd\\landscape b") << int(Rich_Text::Section_Pages);
    QTest::newRow("shape") << QByteArray("{\\shp{\\*\\shpinst{\\sp{\\sn a}{\\sv 1}}}}") << int(Rich_Text::Drawings);
    QTest::newRow("object and field")
        << QByteArray("{\\object{\\*\\objdata 01}{\\result a}}{\\field{\\*\\fldinst DATE}{\\fldrslt b}}")
        << (Rich_Text::Objects | Rich_Text::Other_Fields);
}

/// What has been saved without it no longer holds it.
void Test_Rtf_Reader::tells_what_is_not_kept()
{
    QFETCH(QByteArray, body);
    QTextDocument document;
    QVERIFY(Rich_Text::Read_Rtf(Whole(body), document));
    QTEST(Rich_Text::Losses(document), "losses");
    QVERIFY(Rich_Text::Read_Rtf(Rich_Text::Write_Rtf(document), document));
    QCOMPARE(Rich_Text::Losses(document), 0);
}

void Test_Rtf_Reader::refuses_other_bytes()
{
    QTextDocument document;
    document.setPlainText(u"as before"_qs);
    for (const char *bytes : {"", "{", "plain", "{\\rt", "\\rtf1", "<html>"})
        QVERIFY2(!Rich_Text::Read_Rtf(bytes, document), bytes);
    QCOMPARE(document.toPlainText(), u"as before"_qs);
    QVERIFY(Rich_Text::Read_Rtf("\r\n{\\rtf1 x", document));
    QCOMPARE(document.toPlainText(), u"x"_qs);
}

QTEST_MAIN(Test_Rtf_Reader)
#include "test_rtf_reader.moc"
