#include "ui/controls/currencyfield.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>

#include <cmath>

std::optional<double> CurrencyField::read(const QString& text)
{
    bool ok = false;
    const double value = QLocale(QLocale::English, QLocale::UnitedStates).toDouble(text.trimmed(), &ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}

QString CurrencyField::display(double value)
{
    QLocale locale(QLocale::English, QLocale::UnitedStates);
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(value, 'f', 2);
}

CurrencyField::CurrencyField(const QString& label, QWidget* parent)
    : QWidget(parent)
    , m_label(new QLabel(label, this))
    , m_edit(new QLineEdit(display(0), this))
{
    m_label->setBuddy(m_edit);
    m_edit->setAlignment(Qt::AlignRight);
    m_edit->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    setFocusProxy(m_edit);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_label);
    layout->addWidget(m_edit, 1);

    connect(m_edit, &QLineEdit::textEdited, this, &CurrencyField::takeTypedText);
    connect(m_edit, &QLineEdit::editingFinished, this, [this] { m_edit->setText(display(m_value)); });
}

void CurrencyField::setValue(double value)
{
    // Left alone while it already reads as this value, so typing "12." isn't turned into "12.00".
    if (read(m_edit->text()) != value)
        m_edit->setText(display(value));
    if (value == m_value)
        return;
    m_value = value;
    Q_EMIT valueChanged(value);
}

void CurrencyField::takeTypedText(const QString& text)
{
    const std::optional<double> typed = read(text);
    if (!typed || *typed == m_value)
        return;
    m_value = *typed;
    Q_EMIT valueChanged(m_value);
}
