#include "ui/pos/amountsheet.h"

#include "money/numberentry.h"
#include "ui/style/theme.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

AmountSheet::AmountSheet(const QString& title, const QString& note, const QString& fieldTitle, const QString& text,
                         Apply apply, QWidget* parent)
    : Sheet(QStringLiteral("Apply"), parent)
    , m_field(new QLineEdit(text, this))
    , m_apply(std::move(apply))
{
    setTitle(title);
    if (!note.isEmpty())
        form()->addWidget(Theme::label(note, Theme::Text::note, this));
    form()->addWidget(Theme::label(fieldTitle, Theme::Text::strong, this));
    m_field->setPlaceholderText(QStringLiteral("0.00"));
    m_field->setAccessibleName(fieldTitle);
    m_field->selectAll();
    form()->addWidget(m_field);
    setMinimumWidth(340);
}

void AmountSheet::primaryAction()
{
    const QString text = m_field->text();
    if (!text.trimmed().isEmpty() && !NumberEntry::money(text).value) {
        showError(NumberEntry::moneyProblem());
        m_field->setFocus();
        return;
    }
    if (m_apply(text))
        accept();
}
