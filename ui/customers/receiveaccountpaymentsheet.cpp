#include "ui/customers/receiveaccountpaymentsheet.h"

#include "ui/controls/formfields.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

ReceiveAccountPaymentSheet::ReceiveAccountPaymentSheet(AccountsService& accounts, SessionStore& session,
                                                       const Ref<Customer>& customer, double owed,
                                                       QWidget* parent)
    : Sheet(ReceiveAccountPaymentModel::recordTitle(), parent)
    , m_model(accounts, session, customer, owed, [this] { accept(); })
{
    using Model = ReceiveAccountPaymentModel;
    setTitle(Model::title());
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

    auto* amountRow = new QHBoxLayout;
    amountRow->setSpacing(8);
    amountRow->addWidget(m_amount, 1);
    amountRow->addWidget(m_fullBalance);
    auto* amountCaption = new QLabel(Model::amountTitle(), this);
    amountCaption->setBuddy(m_amount);
    m_amount->setAccessibleName(Model::amountTitle());

    auto* owes = Theme::label(m_model.owesLine(), Theme::Text::subtitle, this);
    owes->setTextFormat(Qt::PlainText);
    form()->addWidget(owes);
    auto* amountPair = new QVBoxLayout;
    amountPair->setSpacing(4);
    amountPair->addWidget(amountCaption);
    amountPair->addLayout(amountRow);
    form()->addLayout(amountPair);
    addLabelledField(form(), Model::methodTitle(), m_method);
    addLabelledField(form(), Model::referenceTitle(), m_reference);
    form()->addWidget(m_tillNote);

    bindText(m_amount, m_model, &Model::amountText, &Model::setAmountText, &Model::fieldsChanged);
    bindText(m_reference, m_model, &Model::reference, &Model::setReference, &Model::fieldsChanged);
    connect(m_fullBalance, &QPushButton::clicked, this, [this] {
        m_model.fillFullBalance();
        m_amount->setFocus();
    });
    connect(m_method, &SegmentedControl::currentIndexChanged, this,
            [this](int index) { m_model.setMethod(Model::methods[index]); });
    connect(&m_model, &Model::fieldsChanged, this, &ReceiveAccountPaymentSheet::showTillNote);
    connect(&m_model, &Model::errorMessageChanged, this, [this] { showError(m_model.errorMessage()); });
    showTillNote();
    m_amount->setFocus();
}

void ReceiveAccountPaymentSheet::primaryAction()
{
    if (!m_model.record())
        m_amount->selectAll();
}

void ReceiveAccountPaymentSheet::showTillNote()
{
    const std::optional<QString> note = m_model.tillNote();
    m_tillNote->setText(note.value_or(QString()));
    m_tillNote->setVisible(note.has_value());
}
