#include "ui/refunds/refundlinerow.h"

#include "money/quantity.h"
#include "ui/refunds/refundviewmodel.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
constexpr int controlWidth = 200;
constexpr int unitWidth = 24;
} // namespace

RefundLineRow::RefundLineRow(RefundViewModel& model, Ref<SaleItem> item, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_item(std::move(item))
    , m_unit(SellingUnits::fromRaw(m_item->sellingUnitRaw()))
{
    auto* name = Theme::label(m_item->productNameSnapshot(), Theme::Text::strong, this);
    name->setTextFormat(Qt::PlainText);
    m_detail = Theme::label(QString(), Theme::Text::note, this);
    m_detail->setText(QStringLiteral("Purchased %1 · %2 eligible to return")
                          .arg(Quantity::format(m_item->quantity(), m_unit),
                               Quantity::format(RefundViewModel::remaining(*m_item), m_unit)));
    auto* text = new QVBoxLayout;
    text->setSpacing(2);
    text->addWidget(name);
    text->addWidget(m_detail);

    // The quantity sits in a column of its own width, so that fields and steppers line up from row
    // to row whatever the unit.
    auto* control = new QWidget(this);
    control->setFixedWidth(controlWidth);
    auto* controls = new QHBoxLayout(control);
    controls->setContentsMargins(0, 0, 0, 0);
    controls->setSpacing(6);
    controls->addStretch();
    // The field's unit stands behind it; a stepper's value carries its own.
    auto* unit = new QLabel(control);
    unit->setFixedWidth(unitWidth);
    const QString what = QStringLiteral("Quantity of %1 to return").arg(m_item->productNameSnapshot());
    if (RefundViewModel::takesTypedQuantity(m_unit)) {
        m_field = new QLineEdit(control);
        m_field->setPlaceholderText(QStringLiteral("0"));
        m_field->setAlignment(Qt::AlignRight);
        m_field->setFixedWidth(90);
        m_field->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
        m_field->setAccessibleName(what);
        controls->addWidget(m_field);
        unit->setText(SellingUnits::symbol(m_unit));
        connect(m_field, &QLineEdit::textEdited, this,
                [this](const QString& typed) { m_model.setReturnQuantityText(*m_item, typed); });
        // What was typed beyond what is left shows as what the form holds once the field is left.
        connect(m_field, &QLineEdit::editingFinished, this, [this] { showTypedQuantity(); });
    } else {
        m_less = new QPushButton(QStringLiteral("−"), control);
        m_more = new QPushButton(QStringLiteral("+"), control);
        m_value = Theme::label(QString(), Theme::Text::strong, control);
        m_value->setAlignment(Qt::AlignCenter);
        m_value->setMinimumWidth(44);
        m_value->setAccessibleName(what);
        m_less->setAccessibleName(QStringLiteral("Return one less"));
        m_more->setAccessibleName(QStringLiteral("Return one more"));
        for (QPushButton* button : {m_less, m_more})
            button->setFixedWidth(40);
        controls->addWidget(m_less);
        controls->addWidget(m_value);
        controls->addWidget(m_more);
        connect(m_less, &QPushButton::clicked, this, [this] { step(-1); });
        connect(m_more, &QPushButton::clicked, this, [this] { step(1); });
    }
    controls->addWidget(unit);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 4, 0, 4);
    row->setSpacing(12);
    row->addLayout(text, 1);
    row->addWidget(control);
    refresh();
}

void RefundLineRow::step(double by)
{
    m_model.setReturnQuantity(*m_item, std::max(m_model.returnQuantity(*m_item) + by, 0.0));
}

void RefundLineRow::refresh()
{
    if (m_field) {
        // Not while it is being typed into: the text would jump under the cursor.
        if (!m_field->hasFocus())
            showTypedQuantity();
        return;
    }
    const double quantity = m_model.returnQuantity(*m_item);
    m_value->setText(Quantity::format(quantity, m_unit));
    m_less->setEnabled(quantity > 0);
    m_more->setEnabled(quantity < RefundViewModel::remaining(*m_item));
}

void RefundLineRow::showTypedQuantity()
{
    const double quantity = m_model.returnQuantity(*m_item);
    m_field->setText(quantity > 0 ? Quantity::format(quantity) : QString());
}
