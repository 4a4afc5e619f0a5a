#pragma once

#include <QWidget>

#include <optional>

class QLabel;
class QLineEdit;

// A labelled money entry bound to a number. What is typed counts only once it reads as a number;
// until then the last good value stands, and leaving the field shows that value again.
class CurrencyField : public QWidget {
    Q_OBJECT

public:
    // en_US digits with an optional "," grouping and "." point; absent for anything else,
    // infinities and NaN included.
    static std::optional<double> read(const QString& text);
    // Two decimals, no grouping, so that what is shown reads back as the same number.
    static QString display(double value);

    explicit CurrencyField(const QString& label, QWidget* parent = nullptr);

    double value() const { return m_value; }
    void setValue(double value);
    QLineEdit* lineEdit() const { return m_edit; }

Q_SIGNALS:
    void valueChanged(double value);

private:
    void takeTypedText(const QString& text);

    QLabel* m_label;
    QLineEdit* m_edit;
    double m_value = 0;
};
