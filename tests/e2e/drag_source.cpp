// SPDX-License-Identifier: GPL-3.0-or-later
//
// A window that stands in for a file manager: a mouse drag out of it carries the files named on the command line.

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

class Drag_Source : public QWidget
{
protected:
    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (!event->buttons().testFlag(Qt::LeftButton))
            return;
        QList<QUrl> urls;
        for (const QString &path : QCoreApplication::arguments().mid(1))
            urls << QUrl::fromLocalFile(path);
        auto *files = new QMimeData;
        files->setUrls(urls);
        auto *drag = new QDrag(this); // lives on until its data were fetched
        drag->setMimeData(files);
        drag->exec(Qt::CopyAction);
    }
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    Drag_Source source;
    source.setWindowFlag(Qt::X11BypassWindowManagerHint);
    source.setWindowTitle(QStringLiteral("drag source"));
    source.setGeometry(0, 0, 60, 60);
    source.show();
    return QApplication::exec();
}
