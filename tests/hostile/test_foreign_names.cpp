// SPDX-License-Identifier: GPL-3.0-or-later
#include "hostile/watch.h"
#include "platform/desktop/plain_labels.h"
#include "platform/models/list_model.h"
#include "platform/prompts/prompts.h"

#include <QApplication>
#include <QLabel>
#include <QProgressDialog>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

using Show = void (*)(const QString &name);

/// A name that looks like a page stands there as it is, and nothing that it names is opened.
class Test_Foreign_Names : public QObject
{
    Q_OBJECT

private slots:
    void A_Name_Is_No_Page_data()
    {
        QTest::addColumn<Show>("show");
        const auto row = [](const char *where, Show show) {
            QTest::newRow(where) << show;
        };
        row("label", [](const QString &name) {
            QLabel label(name);
            label.grab();
            QVERIFY(label.sizeHint().width() > label.fontMetrics().horizontalAdvance(name) / 2);
        });
        row("message", [](const QString &name) { Prompts::Message(name, name); });
        row("input", [](const QString &name) { Prompts::Input(name, name); });
        row("progress", [](const QString &name) { QProgressDialog(name, name, 0, 2).grab(); });
        row("tip", [](const QString &name) {
            List_Row line;
            line.tool_tip = name;
            List_Model model;
            model.Set_Columns({{name, name}});
            model.Replace({line});
            QToolTip::showText({10, 10}, model.index(0, 0).data(Qt::ToolTipRole).toString());
            QVERIFY(!QToolTip::text().contains(u"<img"_s));
            QToolTip::hideText();
        });
    }
    void A_Name_Is_No_Page()
    {
        QFETCH(Show, show);
        Keep_Labels_Plain();
        const QTemporaryDir folder;
        const QString pipe = folder.filePath(u"pipe"_s);
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        const Watch watch(folder.path());
        QTimer::singleShot(50, [] { // leaves a box that waits for its user
            if (QWidget *box = QApplication::activeModalWidget())
                box->close();
        });
        show(u"<p>Name</p><img src='%1' width=9 height=9>"_s.arg(pipe));
        QVERIFY(!watch.Has_Seen_One());
    }
};

QTEST_MAIN(Test_Foreign_Names)
#include "test_foreign_names.moc"
