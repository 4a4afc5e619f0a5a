#include "ui/pos/quantityentrysheet.h"

#include "ui/controls/cards.h"
#include "ui/controls/formfields.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

QuantityEntrySheet::QuantityEntrySheet(QuantityEntry& entry, std::function<void(double)> onDone,
                                       std::function<void()> onCancel, QWidget* parent)
    : Sheet(entry.confirmText(), parent)
    , m_entry(entry)
    , m_onDone(std::move(onDone))
    , m_onCancel(std::move(onCancel))
{
    setTitle(entry.product()->name());
    setFixedWidth(380);
    cancelButton()->setAutoDefault(false);

    m_amount = new QLineEdit(this);
    m_amount->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    m_amount->setMinimumHeight(40);
    QFont large = m_amount->font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    m_amount->setFont(large);
    m_unit = Theme::label(entry.unitLabel(), Theme::Text::subtitle, this);
    m_unit->setVisible(!entry.unitLabel().isEmpty());

    auto* caption = new QLabel(entry.fieldTitle(), this);
    caption->setBuddy(m_amount);
    m_amount->setAccessibleName(entry.fieldTitle());
    auto* fieldRow = new QHBoxLayout;
    fieldRow->setSpacing(8);
    fieldRow->addWidget(m_amount, 1);
    fieldRow->addWidget(m_unit);
    auto* field = new QVBoxLayout;
    field->setSpacing(4);
    field->addWidget(caption);
    field->addLayout(fieldRow);
    form()->addLayout(field);

    m_hint = Theme::label(QString(), Theme::Text::note, this);
    Theme::setKind(m_hint, "warning");
    m_hint->setWordWrap(true);
    // Its room is kept while hidden, so that the buttons don't jump as the cashier types.
    QSizePolicy keepRoom = m_hint->sizePolicy();
    keepRoom.setRetainSizeWhenHidden(true);
    m_hint->setSizePolicy(keepRoom);
    form()->addWidget(m_hint);
    m_lineTotal = addFigure(form(), QStringLiteral("Line total"), this);

    bindText(m_amount, m_entry, &QuantityEntry::text, &QuantityEntry::setText, &QuantityEntry::fieldsChanged);
    connect(&m_entry, &QuantityEntry::fieldsChanged, this, &QuantityEntrySheet::showEntry);
    showEntry();
    // A scale operator types the weight straight away; an edited amount is replaced as typed.
    focusToReplace(m_amount);
}

void QuantityEntrySheet::showEntry()
{
    const std::optional<QString> hint = m_entry.hint();
    m_hint->setText(hint.value_or(QString()));
    m_hint->setVisible(hint.has_value());
    m_lineTotal->setText(m_entry.lineTotalText());
    primaryButton()->setEnabled(m_entry.canConfirm());
}

void QuantityEntrySheet::primaryAction()
{
    if (!m_entry.canConfirm())
        return;
    const double quantity = m_entry.value();
    // Closed first: taking the amount may end the entry this sheet shows.
    QDialog::accept();
    if (m_onDone)
        m_onDone(quantity);
}

void QuantityEntrySheet::reject()
{
    QDialog::reject();
    if (m_onCancel)
        m_onCancel();
}
