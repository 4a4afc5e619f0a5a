#include "ui/style/theme.h"

#include <QApplication>
#include <QLabel>
#include <QPalette>
#include <QPushButton>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>

namespace {
const char* const kindProperty = "kind";

const char* textKind(Theme::Text kind)
{
    switch (kind) {
    case Theme::Text::title:
        return "title";
    case Theme::Text::heading:
        return "heading";
    case Theme::Text::subtitle:
        return "subtitle";
    case Theme::Text::note:
        return "note";
    case Theme::Text::strong:
        return "strong";
    }
    Q_UNREACHABLE();
}

// Colours: ink #1f2328, muted #5f6b7a, hairline #dde1e6, ground #f4f5f7, accent #2f6fb3.
const char* const styleSheet = R"(
QLabel[kind="title"] { font-size: 24px; font-weight: 600; }
QLabel[kind="heading"] { font-size: 17px; font-weight: 600; }
QLabel[kind="subtitle"] { font-size: 15px; color: #5f6b7a; }
QLabel[kind="note"] { font-size: 13px; color: #5f6b7a; }
QLabel[kind="strong"] { font-weight: 600; }
QLabel[kind="error"] { color: #c62828; }
QLabel[kind="warning"] { font-size: 13px; color: #9a5b00; }
*[kind="alert"] { background: #fbe9e7; border: 1px solid #f0c4bd; border-radius: 8px; }
*[kind="alert"] QLabel { color: #a32a1e; background: transparent; border: none; }
*[kind="card"] QLabel[kind="badge"], QLabel[kind="badge"] { font-size: 12px; color: #1d4f86; background: #dce8f6; border-radius: 8px;
                       padding: 1px 8px; }
*[kind="card"] QLabel[kind="warningBadge"], QLabel[kind="warningBadge"] { font-size: 12px; font-weight: 600;
                       color: #8a4b00; background: #fdebc8; border-radius: 8px; padding: 1px 8px; }

*[kind="card"] { background: #ffffff; border: 1px solid #dde1e6; border-radius: 12px; }
*[kind="card"] QLabel { background: transparent; border: none; }

QLineEdit, QComboBox, QPlainTextEdit, QAbstractSpinBox { background: #ffffff; border: 1px solid #c9cfd6;
                       border-radius: 6px; padding: 6px 8px; min-height: 20px; selection-background-color: #2f6fb3; }
QLineEdit:focus, QComboBox:focus, QPlainTextEdit:focus, QAbstractSpinBox:focus { border: 1px solid #2f6fb3; }
QComboBox::drop-down, QDateTimeEdit::drop-down { border: none; width: 22px; }
QAbstractSpinBox::up-button, QAbstractSpinBox::down-button { width: 0; border: none; }
QLineEdit:disabled, QComboBox:disabled, QPlainTextEdit:disabled, QAbstractSpinBox:disabled { background: #f4f5f7;
                       color: #5f6b7a; }

QPushButton { background: #ffffff; border: 1px solid #c9cfd6; border-radius: 6px; padding: 7px 16px;
              min-height: 20px; outline: none; }
QPushButton:hover { background: #f0f3f6; }
QPushButton:pressed { background: #e4e8ed; }
QPushButton:focus { border: 1px solid #2f6fb3; }
QPushButton:disabled { color: #9aa3ad; }
QPushButton[kind="primary"] { background: #2f6fb3; border: 1px solid #2f6fb3; color: #ffffff;
                              font-weight: 600; }
QPushButton[kind="primary"]:hover { background: #285f9a; }
QPushButton[kind="primary"]:pressed { background: #224f80; }
QPushButton[kind="primary"]:focus { border: 2px solid #1d4f86; }
QPushButton[kind="primary"]:disabled { background: #a9c3e0; border: 1px solid #a9c3e0; color: #f4f7fb; }

QFrame#cartLine { background: #ffffff; border: none; border-bottom: 1px solid #dde1e6; }
QFrame#cartLine[kind="selected"] { background: #e8f0fa; }
QPushButton[kind="step"] { padding: 0; font-size: 16px; font-weight: 600; }
QToolButton#lineMenu { border: 1px solid #c9cfd6; border-radius: 6px; padding: 2px 8px; background: #ffffff; }
QToolButton#lineMenu::menu-indicator { image: none; width: 0; }
QPushButton[kind="chip"] { border-radius: 14px; padding: 4px 14px; min-height: 18px; }
QPushButton[kind="chip"]:checked { background: #2f6fb3; border: 1px solid #2f6fb3; color: #ffffff; }
QLabel[kind="total"] { font-size: 20px; font-weight: 700; }

QPushButton[kind="segment"] { border-radius: 0; padding: 6px 14px; margin: 0; }
QPushButton[kind="segment"][position="first"] { border-top-left-radius: 6px;
                                                border-bottom-left-radius: 6px; }
QPushButton[kind="segment"][position="last"] { border-top-right-radius: 6px;
                                               border-bottom-right-radius: 6px; border-left: none; }
QPushButton[kind="segment"]:checked { background: #2f6fb3; border-color: #2f6fb3; color: #ffffff;
                                      font-weight: 600; }

QFrame[kind="paperTray"] { background: #eceff3; border: none; border-radius: 8px; }

QPushButton[kind="key"] { font-size: 20px; min-width: 56px; min-height: 44px; }

QCheckBox { spacing: 8px; }

QWidget#sidebar { background: #eceff3; border-right: 1px solid #dde1e6; }
QListWidget#sectionList { background: transparent; border: none; outline: none; }
QListWidget#sectionList::item { padding: 8px 12px; margin: 1px 0; border-radius: 6px; color: #1f2328; }
QListWidget#sectionList::item:hover { background: #e1e6ec; }
QListWidget#sectionList::item:selected { background: #2f6fb3; color: #ffffff; font-weight: 600; }

QScrollArea { background: transparent; border: none; }
QScrollArea > QWidget > QWidget { background: transparent; }
QScrollBar:vertical { background: transparent; width: 12px; margin: 0; }
QScrollBar:horizontal { background: transparent; height: 12px; margin: 0; }
QScrollBar::handle { background: #c4cad1; border-radius: 4px; margin: 2px; }
QScrollBar::handle:vertical { min-height: 32px; }
QScrollBar::handle:horizontal { min-width: 32px; }
QScrollBar::handle:hover { background: #a7afb8; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; border: none; }
QScrollBar::add-page, QScrollBar::sub-page { background: none; }
QToolTip { color: #1f2328; background: #ffffff; border: 1px solid #c9cfd6; padding: 4px; }
)";
} // namespace

void Theme::apply(QApplication& application)
{
    application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));

    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xf4, 0xf5, 0xf7));
    palette.setColor(QPalette::WindowText, QColor(0x1f, 0x23, 0x28));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf7, 0xf8, 0xfa));
    palette.setColor(QPalette::Text, QColor(0x1f, 0x23, 0x28));
    palette.setColor(QPalette::Button, Qt::white);
    palette.setColor(QPalette::ButtonText, QColor(0x1f, 0x23, 0x28));
    palette.setColor(QPalette::PlaceholderText, QColor(0x8a, 0x94, 0x9f));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb3));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, Qt::white);
    palette.setColor(QPalette::ToolTipText, QColor(0x1f, 0x23, 0x28));
    // A switch or field that can't be used must look it.
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x9a, 0xa3, 0xad));
    application.setPalette(palette);

    QFont font = application.font();
    font.setPixelSize(14);
    application.setFont(font);
    application.setStyleSheet(QString::fromUtf8(styleSheet));
}

QLabel* Theme::label(const QString& text, Text kind, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    setKind(label, textKind(kind));
    label->setWordWrap(kind == Text::note || kind == Text::subtitle);
    return label;
}

void Theme::markPrimary(QPushButton* button)
{
    setKind(button, "primary");
}

void Theme::markCard(QWidget* widget)
{
    // A plain QWidget draws a style sheet background only with this set.
    widget->setAttribute(Qt::WA_StyledBackground);
    setKind(widget, "card");
}

void Theme::setKind(QWidget* widget, const char* kind)
{
    widget->setProperty(kindProperty, QString::fromLatin1(kind));
    // A widget already shown keeps its old look until its style is worked out again.
    if (widget->testAttribute(Qt::WA_WState_Polished)) {
        widget->style()->unpolish(widget);
        widget->style()->polish(widget);
    }
}
