#include "ui/till/tillview.h"

#include "environment/appenvironment.h"
#include "money/currency.h"
#include "records/user.h"
#include "startup/sessionstore.h"
#include "till/shiftdetailmodel.h"
#include "ui/controls/cards.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/lazyrefresh.h"
#include "ui/controls/numerickeypad.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/controls/tables.h"
#include "ui/navigation/appsection.h"
#include "ui/style/theme.h"
#include "ui/till/shiftdetailsheet.h"
#include "ui/till/shifthistorymodel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
// The pay type picker's segments, in the order of CashMovementTypes::all.
constexpr int payInSegment = 0;
constexpr int payOutSegment = 1;
constexpr int visibleHistoryRows = 12;

const QLocale& usLocale()
{
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return locale;
}

QLineEdit* makeMoneyEdit(QWidget* parent)
{
    auto* edit = new QLineEdit(parent);
    edit->setPlaceholderText(TillViewModel::moneyHint());
    edit->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    edit->setAlignment(Qt::AlignRight);
    return edit;
}

} // namespace

TillView::TillView(AppEnvironment& environment, SessionStore& session, QWidget* parent)
    : QScrollArea(parent)
    , m_session(session)
    , m_model(environment.tillService(), environment.accountsService(), environment.approvalService(),
              environment.modelContext(), session)
    , m_detailSource(environment.modelContext())
{
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(32, 28, 32, 32);
    column->setSpacing(16);
    // A refusal stands beside the title, in room the title row has anyway: below it, it would push
    // the form down under the pointer.
    m_error = new ErrorLabel(page);
    m_error->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* titleRow = new QHBoxLayout;
    titleRow->setSpacing(24);
    titleRow->addWidget(Theme::label(AppSections::title(AppSection::till), Theme::Text::title, page));
    titleRow->addWidget(m_error, 1);
    column->addLayout(titleRow);
    m_backupMessage = Theme::label(QString(), Theme::Text::note, page);
    m_backupMessage->setTextFormat(Qt::PlainText);
    m_backupMessage->hide();
    column->addWidget(m_backupMessage);

    auto* closed = new Card(page);
    closed->content()->addWidget(Theme::label(QStringLiteral("Till Closed"), Theme::Text::heading, closed));
    auto* resultRow = new QHBoxLayout;
    resultRow->setSpacing(28);
    m_closedExpected = new QLabel(closed);
    m_closedCounted = new QLabel(closed);
    m_closedVariance = Theme::label(QString(), Theme::Text::strong, closed);
    resultRow->addWidget(m_closedExpected);
    resultRow->addWidget(m_closedCounted);
    resultRow->addWidget(m_closedVariance);
    resultRow->addStretch();
    closed->content()->addLayout(resultRow);
    closed->hide();
    column->addWidget(closed);
    m_closedResult = closed;

    m_openFormPage = openForm();
    m_openShiftPage = openShiftPage();
    // One or the other is shown; a hidden one takes no room, as it would in a stack.
    column->addWidget(m_openFormPage);
    column->addWidget(m_openShiftPage);
    column->addSpacing(8);
    column->addWidget(historySection());
    column->addStretch();
    setWidget(page);

    connect(&m_model, &TillViewModel::errorMessageChanged, this,
            [this] { m_error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &TillViewModel::backupMessageChanged, this, [this] {
        m_backupMessage->setText(m_model.backupMessage().value_or(QString()));
        m_backupMessage->setVisible(m_model.backupMessage().has_value());
    });
    auto* lazyRefresh = new LazyRefresh(this, [this] { refresh(); });
    connect(&m_model, &TillViewModel::tillChanged, lazyRefresh, &LazyRefresh::request);
    connect(&m_session, &SessionStore::currentTillShiftChanged, this, &TillView::refresh);
    connect(&m_session, &SessionStore::settingsChanged, this, &TillView::refresh);
    refresh();
}

QWidget* TillView::openForm()
{
    using Model = TillViewModel;
    auto* card = new Card;
    QVBoxLayout* layout = card->content();
    layout->addWidget(Theme::label(Model::openTitle(), Theme::Text::heading, card));
    layout->addWidget(Theme::label(Model::openMessage(), Theme::Text::subtitle, card));

    m_openingFloat = makeMoneyEdit(card);
    m_openingFloat->setFixedWidth(240);
    m_open = new QPushButton(Model::openTitle(), card);
    Theme::markPrimary(m_open);
    // For a touch screen; the keys never take the focus from the field.
    m_keypad = new NumericKeypad(card);

    auto* entry = new QVBoxLayout;
    entry->setSpacing(14);
    addLabelledField(entry, Model::openingFloatTitle(), m_openingFloat);
    entry->addWidget(m_open);
    entry->addStretch();
    auto* row = new QHBoxLayout;
    row->setSpacing(32);
    row->addLayout(entry);
    row->addWidget(m_keypad, 0, Qt::AlignTop);
    row->addStretch();
    layout->addLayout(row);

    bindText(m_openingFloat, m_model, &Model::openingFloatText, &Model::setOpeningFloatText,
             &Model::fieldsChanged);
    connect(m_keypad, &NumericKeypad::textEdited, &m_model, &Model::setOpeningFloatText);
    // The keys go on from what was typed, not from what they last produced.
    connect(&m_model, &Model::fieldsChanged, m_keypad,
            [this] { m_keypad->setText(m_model.openingFloatText()); });
    connect(m_openingFloat, &QLineEdit::returnPressed, m_open, &QPushButton::click);
    connect(m_open, &QPushButton::clicked, this, [this] {
        if (m_model.openShift()) {
            m_lastClosed = nullptr;
            refresh();
            m_payAmount->setFocus();
        }
    });
    return card;
}

QWidget* TillView::openShiftPage()
{
    using Model = TillViewModel;
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(16);

    auto* openCard = new Card(page);
    QVBoxLayout* openLayout = openCard->content();
    auto* titleRow = new QHBoxLayout;
    titleRow->setSpacing(12);
    titleRow->addWidget(Theme::label(Model::openCardTitle(), Theme::Text::heading, openCard));
    m_since = Theme::label(QString(), Theme::Text::subtitle, openCard);
    titleRow->addWidget(m_since);
    titleRow->addStretch();
    openLayout->addLayout(titleRow);
    auto* figures = new QHBoxLayout;
    figures->setSpacing(48);
    m_floatFigure = addFigure(figures, Model::openingFloatTitle(), openCard);
    m_cashSalesFigure = addFigure(figures, Model::cashSalesTitle(), openCard);
    // Otherwise cash taken for customers' accounts would leave Expected Cash unexplained.
    m_accountCashFigure = addFigure(figures, QStringLiteral("Account Payments"), openCard);
    m_expectedFigure = addFigure(figures, Model::expectedCashTitle(), openCard);
    figures->addStretch();
    openLayout->addLayout(figures);
    column->addWidget(openCard);

    auto* moveCard = new Card(page);
    QVBoxLayout* moveLayout = moveCard->content();
    moveLayout->addWidget(Theme::label(Model::movementTitle(), Theme::Text::heading, moveCard));
    QStringList typeLabels;
    for (CashMovementType type : CashMovementTypes::all)
        typeLabels << CashMovementTypes::label(type);
    m_payType = new SegmentedControl(typeLabels, moveCard);
    m_payType->setAccessibleName(Model::movementTitle());
    moveLayout->addWidget(m_payType);
    m_payAmount = makeMoneyEdit(moveCard);
    addLabelledField(moveLayout, Model::amountTitle(), m_payAmount);
    m_payReason = new QLineEdit(moveCard);
    addLabelledField(moveLayout, Model::reasonTitle(), m_payReason);
    m_recordMovement = new QPushButton(QStringLiteral("Record"), moveCard);
    Theme::markPrimary(m_recordMovement);
    moveLayout->addWidget(m_recordMovement, 0, Qt::AlignLeft);
    m_movements = makeHistoryTable(4, Model::movementTitle(), moveCard);
    m_movements->horizontalHeader()->hide();
    m_movements->horizontalHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
    moveLayout->addWidget(m_movements);
    moveLayout->addStretch();

    auto* closeCard = new Card(page);
    QVBoxLayout* closeLayout = closeCard->content();
    closeLayout->addWidget(Theme::label(Model::closeTitle(), Theme::Text::heading, closeCard));
    m_countedCash = makeMoneyEdit(closeCard);
    addLabelledField(closeLayout, Model::countedCashTitle(), m_countedCash);
    m_notes = new QLineEdit(closeCard);
    addLabelledField(closeLayout, Model::notesTitle(), m_notes);
    m_close = new QPushButton(QStringLiteral("Close"), closeCard);
    closeLayout->addWidget(m_close, 0, Qt::AlignLeft);
    closeLayout->addStretch();

    auto* forms = new QHBoxLayout;
    forms->setSpacing(16);
    forms->addWidget(moveCard, 1);
    forms->addWidget(closeCard, 1);
    column->addLayout(forms);

    bindText(m_payAmount, m_model, &Model::payAmountText, &Model::setPayAmountText, &Model::fieldsChanged);
    bindText(m_payReason, m_model, &Model::payReason, &Model::setPayReason, &Model::fieldsChanged);
    bindText(m_countedCash, m_model, &Model::countedCashText, &Model::setCountedCashText,
             &Model::fieldsChanged);
    bindText(m_notes, m_model, &Model::closingNotes, &Model::setClosingNotes, &Model::fieldsChanged);
    connect(m_payType, &SegmentedControl::currentIndexChanged, &m_model, [this](int index) {
        m_model.setPayType(index == payOutSegment ? CashMovementType::payOut : CashMovementType::payIn);
    });
    connect(&m_model, &Model::fieldsChanged, m_payType, [this] {
        m_payType->setCurrentIndex(m_model.payType() == CashMovementType::payOut ? payOutSegment
                                                                                 : payInSegment);
    });
    connect(m_payAmount, &QLineEdit::returnPressed, m_payReason, [this] { m_payReason->setFocus(); });
    connect(m_payReason, &QLineEdit::returnPressed, m_recordMovement, &QPushButton::click);
    connect(m_recordMovement, &QPushButton::clicked, this, [this] {
        const Ref<TillShift> shift = m_model.openShiftShown();
        if (!shift)
            return;
        if (m_model.recordCashMovement(shift))
            m_payAmount->setFocus();
    });
    // Closing can't be undone, so only a click on "Close" does it; Return stops at the notes.
    connect(m_countedCash, &QLineEdit::returnPressed, m_notes, [this] { m_notes->setFocus(); });
    connect(m_close, &QPushButton::clicked, this, [this] {
        const Ref<TillShift> shift = m_model.openShiftShown();
        if (!shift)
            return;
        if (m_model.closeShift(shift)) {
            m_lastClosed = shift;
            refresh();
            m_openingFloat->setFocus();
        }
    });
    return page;
}

QWidget* TillView::historySection()
{
    using Model = TillViewModel;
    auto* section = new Section(Model::historyTitle());
    Card* card = section->card();
    m_history = new QTableView(card);
    m_historyModel = new ShiftHistoryModel(m_model, m_history);
    m_history->setModel(m_historyModel);
    setUpRecordTable(m_history, Model::historyTitle(), 30);
    m_history->setFrameShape(QFrame::NoFrame);
    // Sized to its rows by showRows; a growing table would pad its card out.
    m_history->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_history->setCursor(Qt::PointingHandCursor);
    // Each cell says what it is ("Expected ₵150.00"), so the columns need no titles.
    QHeaderView* header = m_history->horizontalHeader();
    header->hide();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(ShiftHistoryModel::cashierColumn, QHeaderView::Stretch);
    m_noHistory = Theme::label(Model::noHistoryMessage(), Theme::Text::note, card);
    section->content()->addWidget(m_history);
    section->content()->addWidget(m_noHistory);
    connect(m_history, &QTableView::clicked, this, [this](const QModelIndex& index) { openShiftDetail(index.row()); });
    connect(m_history, &QTableView::activated, this, [this](const QModelIndex& index) { openShiftDetail(index.row()); });
    return section;
}

void TillView::openShiftDetail(int row)
{
    // A click after a double-click, or Return after a click, finds it open already.
    if (m_detailSheet || row < 0 || row >= m_historyModel->rowCount())
        return;
    ShiftDetailModel model(m_detailSource);
    const std::optional<ShiftDetail> detail = model.detail(m_historyModel->shiftID(row));
    if (!detail) {
        m_error->setMessage(model.errorMessage());
        return;
    }
    const Ref<AppSettings> settings = m_session.settings();
    auto* sheet =
        new ShiftDetailSheet(*detail, settings ? settings->currencySymbol() : Currency::fixedSign, this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    m_detailSheet = sheet;
    sheet->open();
}

bool TillView::isShowingOpenShift() const
{
    return !m_openShiftPage->isHidden();
}

QString TillView::money(double amount) const
{
    const Ref<AppSettings> settings = m_session.settings();
    return Currency::format(amount, settings ? settings->currencySymbol() : Currency::fixedSign);
}

void TillView::refresh()
{
    const Ref<TillShift> shift = m_model.openShiftShown();
    if (shift)
        refreshOpenShift(shift);
    m_openShiftPage->setVisible(shift != nullptr);
    m_openFormPage->setVisible(shift == nullptr);
    showClosedResult();
    refreshHistory();
}

void TillView::refreshOpenShift(const Ref<TillShift>& shift)
{
    m_since->setText(TillViewModel::sinceText(*shift));
    const ShiftFigures figures = m_model.figures(shift);
    m_floatFigure->setText(money(figures.openingFloat));
    m_cashSalesFigure->setText(money(figures.cashSales));
    m_accountCashFigure->setText(money(figures.accountCash));
    m_accountCashFigure->parentWidget()->setVisible(figures.accountCash != 0);
    m_expectedFigure->setText(money(figures.expectedCash));

    const QList<Ref<CashMovement>> movements = m_model.movements(shift);
    m_movements->setRowCount(static_cast<int>(movements.size()));
    for (int row = 0; row < movements.size(); ++row) {
        const CashMovement& movement = *movements[row];
        const CashMovementType type = CashMovementTypes::fromRaw(movement.typeRaw());
        const double signedAmount = type == CashMovementType::payOut ? -movement.amount() : movement.amount();
        setRowCells(m_movements, row,
                    {usLocale().toString(movement.timestamp().toLocalTime().time(), QLocale::ShortFormat),
                     CashMovementTypes::label(type), movement.reason(), money(signedAmount)},
                    3);
    }
    showRows(m_movements, 6);
    m_movements->scrollToBottom();
}

void TillView::refreshHistory()
{
    m_historyModel->reload();
    showRows(m_history, visibleHistoryRows, m_noHistory);
}

void TillView::showClosedResult()
{
    // Gone once another shift is open, or when the shift closed has been deleted.
    if (m_model.openShiftShown() || !m_lastClosed || !m_lastClosed->closedAt()) {
        m_closedResult->hide();
        return;
    }
    const ShiftHistoryRow row = ShiftHistoryRow::make(*m_lastClosed);
    m_closedExpected->setText(row.expectedText);
    m_closedCounted->setText(row.countedText);
    m_closedVariance->setText(row.varianceText);
    m_closedVariance->setStyleSheet(
        QStringLiteral("color: %1;").arg(ShiftHistoryModel::toneColour(row.tone).name()));
    m_closedResult->show();
}
