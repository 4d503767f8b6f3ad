// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/skin_engine.h"
#include "platform/errors/run_time_error.h"

#include <QApplication>
#include <QFile>
#include <QRegularExpression>
#include <QStyle>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
const QString Password = u"q3VbXk8NtRy1PzHa"_s;

/// WCAG 2.1, "relative luminance" and "contrast ratio".
double Luminance(const QColor &color)
{
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double Contrast(const QColor &a, const QColor &b)
{
    const double one = Luminance(a) + 0.05;
    const double other = Luminance(b) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

QString Skin_File(int number)
{
    return QStringLiteral(ZELQOR_SKINS "/%1.skin").arg(number);
}

struct Pair {
    QPalette::ColorRole text;
    QPalette::ColorRole ground;
};
constexpr Pair Pairs[] = {
    {QPalette::WindowText, QPalette::Window},
    {QPalette::Text, QPalette::Base},
    {QPalette::Text, QPalette::AlternateBase},
    {QPalette::ButtonText, QPalette::Button},
    {QPalette::WindowText, QPalette::Midlight},
    {QPalette::HighlightedText, QPalette::Highlight},
    {QPalette::ToolTipText, QPalette::ToolTipBase},
    {QPalette::PlaceholderText, QPalette::Base},
    {QPalette::Link, QPalette::Base},
    {QPalette::LinkVisited, QPalette::Base},
};

/// Colours that the frame's style sheet puts on one another.
constexpr const char *Sheet_Pairs[][2] = {{"AccentText", "Accent"}, {"Quiet", "Window"},
                                          {"WindowText", "Hover"},  {"WindowText", "Pressed"},
                                          {"ButtonText", "Hover"},  {"ButtonText", "Pressed"},
                                          {"Text", "Hover"},        {"Quiet", "Base"},
                                          {"Link", "Window"},       {"PlaceholderText", "AlternateBase"}};
/// Lines that must be told from what they lie on: the ring of the focus, boxes to tick.
constexpr const char *Ring_Pairs[][2] = {{"Accent", "Window"}, {"Accent", "Base"}, {"Strong", "Base"}};

QColor In_File(const QString &file, const char *name)
{
    QFile skin(file);
    if (!skin.open(QIODevice::ReadOnly))
        return {};
    const QRegularExpression line(u"^%1=(#\\w+)"_s.arg(QLatin1String(name)), QRegularExpression::MultilineOption);
    return QColor(line.match(QString::fromUtf8(skin.readAll())).captured(1));
}
} // namespace

class Test_Skins : public QObject
{
    Q_OBJECT

private slots:
    void init() { SkinH_Set_Library(QStringLiteral(ZELQOR_SKIN_LIBRARY)); }
    void cleanup() { SkinH_Detach(); }

    void Each_Skin_Is_Whole_And_Readable_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<double>("least"); // of texts, WCAG 2.1: 1.4.3, and 1.4.6 for high contrast
        for (int number = 1; number <= 5; ++number)
            QTest::addRow("%d", number) << number << (number == 3 ? 7.0 : 4.5);
    }

    void Each_Skin_Is_Whole_And_Readable()
    {
        QFETCH(int, number);
        QFETCH(double, least);
        QTest::failOnWarning(QRegularExpression(u"stylesheet|svg|pixmap"_s, QRegularExpression::CaseInsensitiveOption));
        QCOMPARE(SkinH_Attach_Ex(Skin_File(number), Password), 0);
        const QPalette palette = QApplication::palette();
        for (const Pair &pair : Pairs) {
            const double ratio = Contrast(palette.color(pair.text), palette.color(pair.ground));
            QVERIFY2(ratio >= least, qPrintable(u"%1 on %2: %3"_s.arg(pair.text).arg(pair.ground).arg(ratio)));
        }
        for (const auto &pair : Sheet_Pairs) {
            const double ratio = Contrast(In_File(Skin_File(number), pair[0]), In_File(Skin_File(number), pair[1]));
            QVERIFY2(ratio >= least, qPrintable(u"%1 on %2: %3"_s.arg(pair[0], pair[1]).arg(ratio)));
        }
        for (const auto &pair : Ring_Pairs) {
            const double ratio = Contrast(In_File(Skin_File(number), pair[0]), In_File(Skin_File(number), pair[1]));
            QVERIFY2(ratio >= 3, qPrintable(u"%1 on %2: %3"_s.arg(pair[0], pair[1]).arg(ratio)));
        }
        const QColor idle = palette.color(QPalette::Disabled, QPalette::WindowText);
        QVERIFY(Contrast(idle, palette.color(QPalette::Window)) >= 2);
        QVERIFY2(!qApp->styleSheet().contains(u'@'), "a colour that the frame asks for is not in the skin");
        for (const auto &picture : QRegularExpression(u"url\\((.*?)\\)"_s).globalMatch(qApp->styleSheet()))
            QVERIFY2(QFile::exists(picture.captured(1)), qPrintable(picture.captured(1)));
    }

    void A_Skin_Comes_And_Goes_While_The_Program_Runs()
    {
        const QString style = QApplication::style()->name();
        const QColor plain = QApplication::palette().color(QPalette::Window);
        SkinH_Attach_Ex(Skin_File(1), Password);
        SkinH_Attach_Ex(Skin_File(2), Password);
        QVERIFY(QApplication::palette().color(QPalette::Window).lightness() < 80);
        SkinH_Detach();
        QCOMPARE(QApplication::palette().color(QPalette::Window), plain);
        QCOMPARE(QApplication::style()->name(), style);
        QVERIFY(qApp->styleSheet().isEmpty());
    }

    void A_File_That_Is_No_Skin_Changes_Nothing_data()
    {
        QTest::addColumn<QByteArray>("bytes"); // null for no file
        QTest::addColumn<QString>("password");
        QFile good(Skin_File(2));
        QVERIFY(good.open(QIODevice::ReadOnly));
        const QByteArray skin = good.readAll();
        QTest::newRow("missing") << QByteArray() << Password;
        QTest::newRow("empty") << QByteArray("") << Password;
        QTest::newRow("old kind") << QByteArray(18244, '\x9c') << Password;
        QTest::newRow("wrong password") << skin << u"another"_s;
        QTest::newRow("without a role") << QByteArray(skin).replace("HighlightedText=", "Lost=") << Password;
        QTest::newRow("not a colour") << QByteArray(skin).replace("Hover=#", "Hover=red;}#") << Password;
        const auto with = [&](const char *style) {
            return skin + "\nQWidget { " + style + " }\n";
        };
        QTest::newRow("picture of a file") << with("background: url(/dev/zero)") << Password;
        QTest::newRow("picture in capitals") << with("BORDER-IMAGE: URL ( '/dev/zero' )") << Password;
        QTest::newRow("picture spelled in escapes") << with("background: \\75rl(/dev/zero)") << Password;
        QTest::newRow("text for every label") << with("qproperty-text: '<img src=/dev/zero>'") << Password;
        QTest::newRow("value that is a sheet")
            << QByteArray(skin).replace("Glyphs=light", "Glyphs=x) } * { a: b(") << Password;
        QTest::newRow("value that names itself twice")
            << QByteArray(skin).replace("Glyphs=light", "Glyphs=@Glyphs@@Glyphs@") << Password;
        QTest::newRow("without end") << skin + QByteArray(1 << 20, ' ') << Password;
        QTest::newRow("no style") << skin.left(skin.indexOf("[Style]")) << Password;
    }

    void A_File_That_Is_No_Skin_Changes_Nothing()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, password);
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"1.skin"_s));
        if (!bytes.isNull()) {
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(bytes);
            file.close();
        }
        SkinH_Attach_Ex(Skin_File(4), Password);
        const QString before = qApp->styleSheet();
        QCOMPARE(SkinH_Attach_Ex(file.fileName(), password), 1);
        QCOMPARE(qApp->styleSheet(), before);
    }

    void A_Missing_Library_Is_Error_53_data()
    {
        QTest::addColumn<QString>("library");
        QTest::newRow("missing") << u"/nonexistent/SkinH_VB6.dll"_s;
        QTest::newRow("another file") << Skin_File(1);
    }

    void A_Missing_Library_Is_Error_53()
    {
        QFETCH(QString, library);
        SkinH_Set_Library(library);
        try {
            SkinH_Attach_Ex(Skin_File(1), Password);
            QFAIL("attached");
        } catch (const Run_Time_Error &error) {
            QCOMPARE(error.number, Error_Number::File_Not_Found);
        }
        QVERIFY(qApp->styleSheet().isEmpty());
    }
};

QTEST_MAIN(Test_Skins)
#include "test_skins.moc"
