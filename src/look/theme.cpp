#include "look/theme.h"

namespace plum {

using namespace Qt::StringLiterals;

namespace {

const Theme &light()
{
    static const Theme theme{.window = QColor(0xfbf9fb),
        .field = QColor(0xffffff),
        .text = QColor(0x241a24),
        .quiet = QColor(0x6f6270),
        .line = QColor(0xdcd3dc),
        .border = QColor(0x8a7d8b),
        .hover = QColor(0xf1e8f0),
        .accent = QColor(0x85326f),
        .onAccent = QColor(0xffffff),
        .comment = QColor(0x567058),
        .string = QColor(0x9a4b12),
        .variable = QColor(0x1f5f99),
        .error = QColor(0xc62828),
        .warning = QColor(0xa66a00),
        .held = QColor(0xfff3c4),
        .isDark = false};
    return theme;
}

const Theme &dark()
{
    static const Theme theme{.window = QColor(0x221d23),
        .field = QColor(0x2c262d),
        .text = QColor(0xf1ebf1),
        .quiet = QColor(0xa99dab),
        .line = QColor(0x453c47),
        .border = QColor(0x84788a),
        .hover = QColor(0x352d37),
        .accent = QColor(0xd78fc4),
        .onAccent = QColor(0x2a1226),
        .comment = QColor(0x8fae92),
        .string = QColor(0xe6a97a),
        .variable = QColor(0x8cc0ee),
        .error = QColor(0xff7b72),
        .warning = QColor(0xe3b341),
        .held = QColor(0x3d3520),
        .isDark = true};
    return theme;
}

} // namespace

Theme Theme::of(const QPalette &palette)
{
    const bool isDark
        = palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    return isDark ? dark() : light();
}

QString Theme::styleSheet() const
{
    QString sheet = uR"(
QWidget { color: @text; }
QLabel[quiet="true"] { color: @quiet; }
QLabel[heading="true"] { font-weight: bold; }
QLineEdit, QPlainTextEdit, QComboBox {
    background: @field; border: 1px solid @border; border-radius: 6px; padding: 6px 9px;
    selection-background-color: @accent; selection-color: @onAccent;
}
QLineEdit:focus, QPlainTextEdit:focus, QComboBox:focus { border: 2px solid @accent; padding: 5px 8px; }
QLineEdit:disabled, QLineEdit[readOnly="true"] { color: @quiet; background: @hover; }
QLineEdit#Text8 { font-size: 16pt; padding: 9px 12px; border-radius: 8px; }
QLineEdit#Text8:focus { padding: 8px 11px; }
QListView { background: transparent; border: none; outline: 0; }
QListView#completions { background: @field; border: 1px solid @border; border-radius: 4px; padding: 2px; }
QListView#completions::item { padding: 2px 8px; }
QListView#completions::item:selected { background: @accent; color: @onAccent; }
QTreeView {
    background: @field; border: 1px solid @border; border-radius: 6px; padding: 2px;
    selection-background-color: @accent; selection-color: @onAccent;
}
QTreeView:focus { border: 2px solid @accent; padding: 1px; }
QTreeView QLineEdit, QTreeView QLineEdit:focus { border: none; border-radius: 0; padding: 0; }
QHeaderView::section { background: @hover; border: none; border-right: 1px solid @line; padding: 2px 6px; }
QLabel#hint { border: 2px solid transparent; border-radius: 5px; }
QLabel#hint:focus { border-color: @accent; }
QComboBox QAbstractItemView {
    background: @field; border: 1px solid @border; outline: 0;
    selection-background-color: @accent; selection-color: @onAccent;
}
QComboBox::drop-down { border: none; width: 20px; }
QPlainTextEdit#tipsbox, QPlainTextEdit#tipsbox:focus {
    background: transparent; border: none; padding: 0; font-size: 11pt;
}
QRadioButton { spacing: 7px; }
QRadioButton::indicator {
    width: 14px; height: 14px; border: 1px solid @quiet; border-radius: 8px; background: @field;
}
QRadioButton::indicator:checked { width: 6px; height: 6px; border: 5px solid @accent; }
QRadioButton::indicator:focus { border-color: @accent; }
QMenu { background: @field; border: 1px solid @border; padding: 4px; }
QMenu::item { padding: 6px 26px 6px 14px; border-radius: 5px; color: @text; }
QMenu::item:selected { background: @accent; color: @onAccent; }
QMenu::separator { height: 1px; background: @line; margin: 4px 8px; }
QPushButton {
    background: @hover; border: 1px solid @border; border-radius: 6px; padding: 6px 14px;
}
QPushButton:hover { border-color: @accent; }
QPushButton:focus { border: 2px solid @accent; padding: 5px 13px; }
QPushButton[primary="true"] { background: @accent; color: @onAccent; border-color: @accent; }
QPushButton[primary="true"]:focus { border: 2px solid @text; }
QPushButton[small="true"] { padding: 3px 9px; }
QPushButton[small="true"]:focus { padding: 2px 8px; }
QPushButton:disabled { color: @quiet; }
QPushButton::menu-indicator { subcontrol-origin: padding; subcontrol-position: right center; right: 4px; }
QRadioButton:focus { color: @accent; }
QFrame[divider="true"] { background: @line; border: none; }
QScrollBar:vertical { background: transparent; width: 8px; margin: 0; }
QScrollBar:horizontal { background: transparent; height: 10px; margin: 0; }
QScrollBar::handle { background: @border; border-radius: 3px; min-height: 24px; min-width: 24px; margin: 1px; }
QScrollBar::handle:hover { background: @quiet; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QToolTip { color: @text; background: @field; border: 1px solid @border; padding: 3px; }
)"_s;
    const std::pair<QLatin1StringView, QColor> colours[]
        = {{"@text"_L1, text}, {"@quiet"_L1, quiet}, {"@field"_L1, field}, {"@line"_L1, line},
            {"@border"_L1, border}, {"@hover"_L1, hover}, {"@accent"_L1, accent}, {"@onAccent"_L1, onAccent}};
    for (const auto &[name, colour] : colours)
        sheet.replace(name, colour.name());
    return sheet;
}

} // namespace plum
