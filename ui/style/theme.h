#pragma once

#include <QString>

class QApplication;
class QLabel;
class QPushButton;
class QWidget;

// The program's one look: a light, calm palette, 14px text, white cards on a grey ground. Widgets
// ask for a kind of text or surface here instead of styling themselves.
class Theme {
public:
    enum class Text { title, heading, subtitle, note, strong };

    static void apply(QApplication& application);

    static QLabel* label(const QString& text, Text kind, QWidget* parent = nullptr);
    // The one button a form is for.
    static void markPrimary(QPushButton* button);
    // A white surface with a hairline border and rounded corners.
    static void markCard(QWidget* widget);
    static void setKind(QWidget* widget, const char* kind);
};
