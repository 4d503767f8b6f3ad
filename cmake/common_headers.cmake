# SPDX-License-Identifier: GPL-3.0-or-later
#
# Headers that nearly every file includes are compiled once for each kind of room (Core, Gui, Widgets). A file includes
# what it uses all the same: the lint compiles without these.

function(zelqor_common_headers name)
    cmake_parse_arguments(COMMON "" "" "LINKS;HEADERS" ${ARGN})
    file(WRITE ${CMAKE_BINARY_DIR}/common/${name}.cpp "")
    add_library(zelqor_common_${name} OBJECT ${CMAKE_BINARY_DIR}/common/${name}.cpp)
    set_target_properties(zelqor_common_${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    target_link_libraries(zelqor_common_${name} PRIVATE zelqor_options ${COMMON_LINKS})
    target_precompile_headers(zelqor_common_${name} PRIVATE ${COMMON_HEADERS})
endfunction()

set(core <algorithm> <array> <chrono> <cmath> <functional> <map> <memory> <mutex> <optional> <span> <string> <utility>
    <variant> <vector> <QBuffer> <QCoreApplication> <QDate> <QDateTime> <QDir> <QFile> <QFileInfo> <QHash> <QLocale>
    <QMimeData> <QPointer> <QProcess> <QRegularExpression> <QSet> <QStringList> <QTemporaryDir> <QTimer> <QUrl> <QVariant>)
set(gui ${core} <QAction> <QColor> <QFont> <QIcon> <QImage> <QImageReader> <QKeyEvent> <QPainter> <QPainterPath> <QPixmap>
    <QTextBlock> <QTextCursor> <QTextDocument> <QTextList> <QTextTable>)
set(widgets ${gui} <QApplication> <QBoxLayout> <QCheckBox> <QComboBox> <QDialog> <QHeaderView> <QLabel> <QLineEdit>
    <QListWidget> <QMainWindow> <QMenu> <QPushButton> <QSpinBox> <QSplitter> <QStyle> <QTabWidget> <QTableView>
    <QTextEdit> <QToolBar> <QToolButton> <QTreeView>)
zelqor_common_headers(core LINKS Qt6::Core HEADERS ${core})
zelqor_common_headers(gui LINKS Qt6::Gui HEADERS ${gui})
zelqor_common_headers(widgets LINKS Qt6::Widgets HEADERS ${widgets})

# Lets a target use the common headers of the largest module that it links.
function(zelqor_use_common_headers target)
    if("Qt6::Widgets" IN_LIST ARGN)
        target_precompile_headers(${target} REUSE_FROM zelqor_common_widgets)
    elseif("Qt6::Gui" IN_LIST ARGN)
        target_precompile_headers(${target} REUSE_FROM zelqor_common_gui)
    else()
        target_precompile_headers(${target} REUSE_FROM zelqor_common_core)
    endif()
endfunction()
