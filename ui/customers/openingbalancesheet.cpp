#include "ui/customers/openingbalancesheet.h"

#include "environment/appenvironment.h"
#include "ui/access/approvalsheet.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/style/theme.h"

#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

OpeningBalanceSheet::OpeningBalanceSheet(AppEnvironment& environment, SessionStore& session,
                                         const Ref<Customer>& customer, QWidget* parent)
    : Sheet(OpeningBalanceModel::saveTitle(), parent)
    , m_environment(environment)
    , m_approvals(environment.approvalService(), environment.accountsService(), session)
    , m_model(environment.accountsService(), session, customer, [this] { accept(); })
{
    using Model = OpeningBalanceModel;
    setTitle(Model::title());
    setFixedWidth(460);

    auto* explanation = Theme::label(m_model.explanation(), Theme::Text::note, this);
    explanation->setTextFormat(Qt::PlainText);
    explanation->setWordWrap(true);
    form()->addWidget(explanation);

    m_amount = new QLineEdit(this);
    m_amount->setPlaceholderText(Model::amountHint());
    m_amount->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    m_amount->setAlignment(Qt::AlignRight);
    m_amountError = new ErrorLabel(this);
    // The field's own error keeps its line, so the fields below don't jump as it comes and goes.
    QSizePolicy keepRoom = m_amountError->sizePolicy();
    keepRoom.setRetainSizeWhenHidden(true);
    m_amountError->setSizePolicy(keepRoom);
    m_amountError->setMinimumHeight(m_amountError->fontMetrics().height());
    auto* amountPair = new QVBoxLayout;
    amountPair->setSpacing(4);
    addLabelledField(amountPair, Model::amountTitle(), m_amount);
    amountPair->addWidget(m_amountError);
    form()->addLayout(amountPair);

    m_owedSince = new QDateEdit(m_model.owedSince(), this);
    m_owedSince->setCalendarPopup(true);
    m_owedSince->setDisplayFormat(QStringLiteral("MMM d, yyyy"));
    m_owedSince->setMaximumDate(Model::latestDay());
    addLabelledField(form(), Model::owedSinceTitle(), m_owedSince);
    m_note = new QLineEdit(this);
    addLabelledField(form(), Model::noteTitle(), m_note);

    bindText(m_amount, m_model, &Model::amountText, &Model::setAmountText, &Model::fieldsChanged);
    bindText(m_note, m_model, &Model::note, &Model::setNote, &Model::fieldsChanged);
    connect(m_owedSince, &QDateEdit::dateChanged, &m_model, &Model::setOwedSince);
    connect(&m_model, &Model::fieldsChanged, m_amountError,
            [this] { m_amountError->setMessage(m_model.amountProblem()); });
    connect(&m_model, &Model::errorMessageChanged, this, [this] { showError(m_model.errorMessage()); });
    m_amountError->setMessage(m_model.amountProblem());
    m_amount->setFocus();
}

void OpeningBalanceSheet::primaryAction()
{
    std::optional<ApprovalRequest> request = m_approvals.enterOpeningBalance(m_model);
    if (!request) {
        if (isVisible() && (m_model.amountProblem() || m_model.errorMessage()))
            focusToReplace(m_amount);
        return;
    }
    ApprovalSheet::raiseInPlaceOf(std::move(*request), m_environment, *this);
}
