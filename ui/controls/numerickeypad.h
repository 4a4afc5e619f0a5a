#pragma once

#include <QWidget>

// On-screen keys for amounts on a touch screen: digits, a decimal point and backspace. The keys
// edit the text they are given, and never take the keyboard focus from the field being typed in.
class NumericKeypad : public QWidget {
    Q_OBJECT

public:
    static QString backspaceKey() { return QStringLiteral("⌫"); }
    // The text after `key` is tapped: a leading "0" gives way to a digit, a second point is
    // ignored, and a point on nothing reads "0.".
    static QString tap(const QString& text, const QString& key);

    explicit NumericKeypad(QWidget* parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString& text) { m_text = text; }

Q_SIGNALS:
    // Only for taps, not for setText.
    void textEdited(const QString& text);

private:
    QString m_text;
};
