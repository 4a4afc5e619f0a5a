#include "ui/customers/receiveaccountpaymentsheet.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/style/theme.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

ReceiveAccountPaymentSheet::ReceiveAccountPaymentSheet(AccountsService& accounts, SessionStore& session,
                                                       const Ref<Customer>& customer, double owed,
                                                       QWidget* parent)
    : QDialog(parent)
    , m_model(accounts, session, customer, owed, [this] { accept(); })
{
    using Model = ReceiveAccountPaymentModel;
    setWindowTitle(Model::title());
    setWindowModality(Qt::WindowModal);
    setFixedWidth(460);

    m_amount = new QLineEdit(this);
    m_amount->setPlaceholderText(Model::amountHint());
    m_amount->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    m_fullBalance = new QPushButton(Model::fullBalanceTitle(), this);
    m_fullBalance->setAutoDefault(false);
    QStringList methodLabels;
    for (PaymentMethodType method : Model::methods)
        methodLabels << PaymentMethodTypes::label(method);
    m_method = new SegmentedControl(methodLabels, this);
    // Return records the payment wherever the focus is, as in the sheet's fields.
    for (int index = 0; index < methodLabels.size(); ++index)
        qobject_cast<QPushButton*>(m_method->segment(index))->setAutoDefault(false);
    m_reference = new QLineEdit(this);
    m_tillNote = Theme::label(QString(), Theme::Text::note, this);
    m_error = new ErrorLabel(this);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    // Marked before the box takes it in, which polishes it with the style of a plain button.
    m_record = new QPushButton(Model::recordTitle(), this);
    Theme::markPrimary(m_record);
    buttons->addButton(m_record, QDialogButtonBox::AcceptRole);
    m_record->setDefault(true);

    auto* amountRow = new QHBoxLayout;
    amountRow->setSpacing(8);
    amountRow->addWidget(m_amount, 1);
    amountRow->addWidget(m_fullBalance);
    auto* amountCaption = new QLabel(Model::amountTitle(), this);
    amountCaption->setBuddy(m_amount);
    m_amount->setAccessibleName(Model::amountTitle());

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(12);
    layout->addWidget(Theme::label(Model::title(), Theme::Text::heading, this));
    auto* owes = Theme::label(m_model.owesLine(), Theme::Text::subtitle, this);
    owes->setTextFormat(Qt::PlainText);
    layout->addWidget(owes);
    auto* amountPair = new QVBoxLayout;
    amountPair->setSpacing(4);
    amountPair->addWidget(amountCaption);
    amountPair->addLayout(amountRow);
    layout->addLayout(amountPair);
    addLabelledField(layout, Model::methodTitle(), m_method);
    addLabelledField(layout, Model::referenceTitle(), m_reference);
    layout->addWidget(m_tillNote);
    layout->addWidget(m_error);
    layout->addSpacing(4);
    layout->addWidget(buttons);

    bindText(m_amount, m_model, &Model::amountText, &Model::setAmountText, &Model::fieldsChanged);
    bindText(m_reference, m_model, &Model::reference, &Model::setReference, &Model::fieldsChanged);
    connect(m_fullBalance, &QPushButton::clicked, this, [this] {
        m_model.fillFullBalance();
        m_amount->setFocus();
    });
    connect(m_method, &SegmentedControl::currentIndexChanged, this,
            [this](int index) { m_model.setMethod(Model::methods[index]); });
    connect(&m_model, &Model::fieldsChanged, this, &ReceiveAccountPaymentSheet::showTillNote);
    connect(&m_model, &Model::errorMessageChanged, this, [this] {
        m_error->setMessage(m_model.errorMessage());
        adjustSize();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // Not through accepted(): the sheet closes only once the payment is recorded.
    connect(m_record, &QPushButton::clicked, this, [this] {
        if (!m_model.record())
            m_amount->selectAll();
    });
    showTillNote();
    m_amount->setFocus();
}

void ReceiveAccountPaymentSheet::showTillNote()
{
    const std::optional<QString> note = m_model.tillNote();
    m_tillNote->setText(note.value_or(QString()));
    m_tillNote->setVisible(note.has_value());
}
