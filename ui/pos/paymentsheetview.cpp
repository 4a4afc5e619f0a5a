#include "ui/pos/paymentsheetview.h"

#include "money/currency.h"
#include "pos/posviewmodel.h"
#include "ui/controls/cards.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/scannerburstfilter.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/style/theme.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

using Mode = PaymentSheetModel::Mode;
// Also the order of the mode choice and of Alt+1 to Alt+5.
constexpr std::array modes{Mode::cash, Mode::card, Mode::mobileMoney, Mode::onAccount, Mode::split};
constexpr int quickCashKeys = 4;

int modeIndex(Mode mode)
{
    return int(std::find(modes.begin(), modes.end(), mode) - modes.begin());
}

int methodIndex(PaymentMethodType method)
{
    const auto& all = PaymentMethodTypes::all;
    return int(std::find(all.begin(), all.end(), method) - all.begin());
}

QLineEdit* moneyField(QWidget* parent)
{
    auto* field = new QLineEdit(parent);
    field->setPlaceholderText(QStringLiteral("0.00"));
    field->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    return field;
}

// Return must complete the sale wherever the focus is, not press the button that has it.
void keepReturnForTheSheet(QPushButton* button)
{
    button->setAutoDefault(false);
}

QLabel* warning(QWidget* parent)
{
    auto* label = Theme::label(QString(), Theme::Text::note, parent);
    Theme::setKind(label, "warning");
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

// The page of the current mode takes its own height; the others take none.
void fitToCurrentPage(QStackedWidget* pages)
{
    for (int index = 0; index < pages->count(); ++index) {
        const bool current = index == pages->currentIndex();
        pages->widget(index)->setSizePolicy(QSizePolicy::Preferred,
                                            current ? QSizePolicy::Preferred : QSizePolicy::Ignored);
    }
    pages->updateGeometry();
}

} // namespace

PaymentSheetView::PaymentSheetView(PaymentSheetModel& model, QWidget* parent)
    : Sheet(QStringLiteral("Complete Sale"), parent)
    , m_model(&model)
    , m_scanner(new ScannerBurstFilter(this))
{
    setTitle(QStringLiteral("Payment"));
    setFixedWidth(560);
    keepReturnForTheSheet(cancelButton());

    auto* due = Theme::label(QStringLiteral("Amount due"), Theme::Text::note, this);
    m_totalDue = Theme::label(QString(), Theme::Text::title, this);
    m_totalDue->setAccessibleName(due->text());
    auto* dueColumn = new QVBoxLayout;
    dueColumn->setSpacing(0);
    dueColumn->addWidget(due);
    dueColumn->addWidget(m_totalDue);
    form()->addLayout(dueColumn);

    QStringList modeLabels;
    for (Mode mode : modes)
        modeLabels << PaymentSheetModel::modeTitle(mode);
    m_modes = new SegmentedControl(modeLabels, this);
    m_modes->setAccessibleName(QStringLiteral("Payment method"));
    for (int index = 0; index < int(modes.size()); ++index) {
        auto* segment = qobject_cast<QPushButton*>(m_modes->segment(index));
        keepReturnForTheSheet(segment);
        const QKeySequence key(Qt::ALT | Qt::Key(Qt::Key_1 + index));
        segment->setToolTip(key.toString(QKeySequence::NativeText));
        connect(new QShortcut(key, this), &QShortcut::activated, this, [this, index] {
            chooseMode(modes[size_t(index)]);
            focusMode();
        });
    }
    form()->addWidget(m_modes);

    m_pages = new QStackedWidget(this);
    m_pages->addWidget(makeCashPage());
    m_pages->addWidget(
        makeChargePage(QStringLiteral("Card auth code (optional)"), m_cardReference, m_cardSentence));
    m_pages->addWidget(makeChargePage(QStringLiteral("Transaction reference (optional)"), m_mobileReference,
                                      m_mobileSentence));
    m_pages->addWidget(makeOnAccountPage());
    m_pages->addWidget(makeSplitPage());
    form()->addWidget(m_pages);
    form()->addWidget(makePointsSection());

    // Keys typed on a button reach the sheet itself; the default button takes Return first.
    m_scanner->watch(this);
    m_scanner->watch(primaryButton());
    connect(m_scanner, &ScannerBurstFilter::burstRefused, this, &PaymentSheetView::refuseScan);

    connect(m_modes, &SegmentedControl::currentIndexChanged, this, [this](int index) {
        chooseMode(modes[size_t(index)]);
        focusMode();
    });
    connect(&model, &PaymentSheetModel::fieldsChanged, this, &PaymentSheetView::showFields);
    connect(&model, &PaymentSheetModel::inputsChanged, this, &PaymentSheetView::showInputs);
    connect(&model, &PaymentSheetModel::pointsReminderChanged, this, &PaymentSheetView::showReminder);
    connect(&model, &PaymentSheetModel::errorMessageChanged, this, [this] {
        if (m_model)
            showError(m_model->errorMessage());
    });
    // The workspace lets go of the model once the sale is through or cancelled; the sheet goes
    // with it at once, not only when the model is deleted.
    if (auto* workspace = qobject_cast<POSViewModel*>(model.parent())) {
        connect(workspace, &POSViewModel::sheetsChanged, this, [this, workspace] {
            if (workspace->paymentSheet() != m_model)
                finish(QDialog::Accepted);
        });
    }
    connect(&model, &QObject::destroyed, this, [this] { finish(QDialog::Accepted); });

    showInputs();
    focusMode();
}

QString PaymentSheetView::money(double amount) const
{
    return Currency::format(amount, m_model->inputs().currencySymbol);
}

QWidget* PaymentSheetView::makeCashPage()
{
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 4, 0, 0);
    column->setSpacing(10);

    m_cashTendered = moneyField(page);
    m_cashTendered->setMinimumHeight(40);
    QFont large = m_cashTendered->font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    m_cashTendered->setFont(large);
    addLabelledField(column, QStringLiteral("Cash Tendered"), m_cashTendered);
    m_cashProblem = new ErrorLabel(page);
    column->addWidget(m_cashProblem);
    bindText(m_cashTendered, *m_model, &PaymentSheetModel::cashTenderedText,
             &PaymentSheetModel::setCashTenderedText, &PaymentSheetModel::fieldsChanged);
    m_scanner->watch(m_cashTendered);

    auto* quick = new QHBoxLayout;
    quick->setSpacing(8);
    for (int index = 0; index < quickCashKeys; ++index) {
        auto* button = new QPushButton(page);
        keepReturnForTheSheet(button);
        const QKeySequence key(Qt::Key(Qt::Key_F1 + index));
        button->setToolTip(key.toString(QKeySequence::NativeText));
        const auto choose = [this, index] {
            if (!m_model || index >= m_quickCashAmounts.size())
                return;
            m_model->setMode(Mode::cash);
            m_model->chooseQuickCash(m_quickCashAmounts[index]);
            focusToReplace(m_cashTendered);
        };
        connect(button, &QPushButton::clicked, this, choose);
        connect(new QShortcut(key, this), &QShortcut::activated, this, choose);
        button->setMinimumWidth(110);
        m_quickCash << button;
        quick->addWidget(button);
    }
    // One amount is a button, not a bar across the sheet.
    quick->addStretch();
    column->addLayout(quick);

    m_changeDue = addFigure(column, QStringLiteral("Change Due"), page);
    return page;
}

QWidget* PaymentSheetView::makeChargePage(const QString& fieldTitle, QLineEdit*& reference, QLabel*& sentence)
{
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 4, 0, 0);
    column->setSpacing(10);
    sentence = Theme::label(QString(), Theme::Text::subtitle, page);
    sentence->setWordWrap(true);
    column->addWidget(sentence);
    reference = new QLineEdit(page);
    addLabelledField(column, fieldTitle, reference);
    bindText(reference, *m_model, &PaymentSheetModel::referenceText, &PaymentSheetModel::setReferenceText,
             &PaymentSheetModel::fieldsChanged);
    m_scanner->watch(reference);
    column->addStretch();
    return page;
}

QWidget* PaymentSheetView::makeOnAccountPage()
{
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 4, 0, 0);
    column->setSpacing(10);

    m_accountProblem = warning(page);
    column->addWidget(m_accountProblem);

    m_accountDetails = new QWidget(page);
    auto* details = new QVBoxLayout(m_accountDetails);
    details->setContentsMargins(0, 0, 0, 0);
    details->setSpacing(10);
    m_accountNote = Theme::label(QString(), Theme::Text::subtitle, m_accountDetails);
    m_accountNote->setWordWrap(true);
    m_accountNote->setTextFormat(Qt::PlainText);
    details->addWidget(m_accountNote);
    auto* figures = new QHBoxLayout;
    figures->setSpacing(24);
    m_owesNow = addFigure(figures, QStringLiteral("Owes now"), m_accountDetails);
    m_willOwe = addFigure(figures, QStringLiteral("Will owe"), m_accountDetails);
    m_creditLimit = addFigure(figures, QStringLiteral("Credit limit"), m_accountDetails);
    figures->addStretch();
    details->addLayout(figures);
    m_accountReference = new QLineEdit(m_accountDetails);
    addLabelledField(details, QStringLiteral("Note (optional)"), m_accountReference);
    bindText(m_accountReference, *m_model, &PaymentSheetModel::referenceText,
             &PaymentSheetModel::setReferenceText, &PaymentSheetModel::fieldsChanged);
    m_scanner->watch(m_accountReference);
    column->addWidget(m_accountDetails);
    column->addStretch();
    return page;
}

QWidget* PaymentSheetView::makeSplitPage()
{
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 4, 0, 0);
    column->setSpacing(10);
    m_rowsLayout = new QVBoxLayout;
    m_rowsLayout->setSpacing(8);
    column->addLayout(m_rowsLayout);

    auto* footer = new QHBoxLayout;
    m_addRow = new QPushButton(QStringLiteral("Add Payment Method"), page);
    keepReturnForTheSheet(m_addRow);
    connect(m_addRow, &QPushButton::clicked, this, [this] {
        if (!m_model)
            return;
        m_model->addSplitRow();
        if (!m_rows.isEmpty())
            m_rows.last().amount->setFocus();
    });
    footer->addWidget(m_addRow, 0, Qt::AlignTop);
    footer->addStretch();
    auto* remaining = new QVBoxLayout;
    m_remaining = addFigure(remaining, QStringLiteral("Remaining"), page);
    footer->addLayout(remaining);
    column->addLayout(footer);
    return page;
}

QWidget* PaymentSheetView::makePointsSection()
{
    m_points = new QWidget(this);
    Theme::markCard(m_points);
    auto* column = new QVBoxLayout(m_points);
    column->setContentsMargins(16, 12, 16, 12);
    column->setSpacing(8);

    auto* header = new QHBoxLayout;
    header->setSpacing(8);
    m_pointsHeader = Theme::label(QString(), Theme::Text::strong, m_points);
    m_pointsHeader->setTextFormat(Qt::PlainText);
    m_pointsWorth = Theme::label(QString(), Theme::Text::note, m_points);
    header->addWidget(m_pointsHeader);
    header->addWidget(m_pointsWorth);
    header->addStretch();
    column->addLayout(header);

    auto* redeeming = new QHBoxLayout;
    m_redeeming = Theme::label(QString(), Theme::Text::subtitle, m_points);
    m_removePoints = new QPushButton(QStringLiteral("Remove"), m_points);
    keepReturnForTheSheet(m_removePoints);
    connect(m_removePoints, &QPushButton::clicked, this, [this] {
        if (m_model)
            m_model->removePoints();
    });
    redeeming->addWidget(m_redeeming, 1);
    redeeming->addWidget(m_removePoints);
    column->addLayout(redeeming);

    m_pointsOffer = Theme::label(QString(), Theme::Text::note, m_points);
    m_pointsOffer->setWordWrap(true);
    m_pointsOffer->setTextFormat(Qt::PlainText);
    column->addWidget(m_pointsOffer);

    m_redeemRow = new QWidget(m_points);
    auto* redeemRow = new QHBoxLayout(m_redeemRow);
    redeemRow->setContentsMargins(0, 0, 0, 0);
    redeemRow->setSpacing(8);
    m_pointsField = new QLineEdit(m_redeemRow);
    m_pointsField->setPlaceholderText(QStringLiteral("Points"));
    m_pointsField->setAccessibleName(QStringLiteral("Points"));
    m_pointsField->setInputMethodHints(Qt::ImhDigitsOnly);
    bindText(m_pointsField, *m_model, &PaymentSheetModel::pointsText, &PaymentSheetModel::setPointsText,
             &PaymentSheetModel::fieldsChanged);
    m_useMost = new QPushButton(m_redeemRow);
    m_redeem = new QPushButton(QStringLiteral("Redeem Points"), m_redeemRow);
    keepReturnForTheSheet(m_useMost);
    keepReturnForTheSheet(m_redeem);
    connect(m_useMost, &QPushButton::clicked, this, [this] {
        if (m_model && m_model->useMost())
            focusMode();
    });
    connect(m_redeem, &QPushButton::clicked, this, [this] {
        if (m_model && m_model->redeem())
            focusMode();
    });
    // Return in the points field redeems them rather than completing the sale without them.
    m_pointsField->installEventFilter(this);
    m_scanner->watch(m_pointsField);
    redeemRow->addWidget(m_pointsField, 1);
    redeemRow->addWidget(m_useMost);
    redeemRow->addWidget(m_redeem);
    column->addWidget(m_redeemRow);
    return m_points;
}

bool PaymentSheetView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_pointsField && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            m_redeem->click();
            return true;
        }
    }
    return Sheet::eventFilter(watched, event);
}

void PaymentSheetView::chooseMode(Mode mode)
{
    if (m_model)
        m_model->setMode(mode);
}

void PaymentSheetView::focusMode()
{
    if (!m_model)
        return;
    switch (m_model->mode()) {
    case Mode::cash:
        focusToReplace(m_cashTendered);
        return;
    case Mode::card:
        m_cardReference->setFocus();
        return;
    case Mode::mobileMoney:
        m_mobileReference->setFocus();
        return;
    case Mode::onAccount:
        if (m_accountReference->isVisibleTo(this))
            m_accountReference->setFocus();
        else
            m_modes->segment(modeIndex(Mode::onAccount))->setFocus();
        return;
    case Mode::split:
        if (!m_rows.isEmpty())
            focusToReplace(m_rows.first().amount);
        else
            m_addRow->setFocus();
        return;
    }
}

void PaymentSheetView::showFields()
{
    if (!m_model)
        return;
    const int page = modeIndex(m_model->mode());
    if (m_modes->currentIndex() != page)
        m_modes->setCurrentIndex(page);
    if (m_pages->currentIndex() != page) {
        m_pages->setCurrentIndex(page);
        fitToCurrentPage(m_pages);
        fitHeight();
    }
    m_cashProblem->setMessage(m_model->cashTenderedProblem());
    m_changeDue->setText(m_model->changeDueText());
    showSplitRows();
    m_remaining->setText(money(m_model->remaining()));
}

void PaymentSheetView::fitHeight()
{
    // Sections shown or hidden a moment ago are counted now, so that the sheet also shrinks.
    m_points->layout()->activate();
    m_pages->currentWidget()->layout()->activate();
    layout()->activate();
    adjustSize();
}

void PaymentSheetView::showInputs()
{
    if (!m_model)
        return;
    m_totalDue->setText(money(m_model->inputs().total));
    m_quickCashAmounts = m_model->quickCashOptions();
    for (int index = 0; index < m_quickCash.size(); ++index) {
        QPushButton* button = m_quickCash[index];
        const bool shown = index < m_quickCashAmounts.size();
        button->setVisible(shown);
        if (shown)
            button->setText(QStringLiteral("%1   F%2").arg(money(m_quickCashAmounts[index])).arg(index + 1));
    }
    m_cardSentence->setText(m_model->fullAmountText());
    m_mobileSentence->setText(m_model->fullAmountText());

    const std::optional<QString> problem = m_model->onAccountProblem();
    m_accountProblem->setText(problem.value_or(QString()));
    m_accountProblem->setVisible(problem.has_value());
    m_accountDetails->setVisible(!problem);
    m_accountNote->setText(m_model->onAccountNote());
    m_owesNow->setText(m_model->owesNowText());
    m_willOwe->setText(m_model->willOweText());
    m_creditLimit->setText(m_model->creditLimitText());

    showPoints();
    showFields();
    fitToCurrentPage(m_pages);
    fitHeight();
}

void PaymentSheetView::showSplitRows()
{
    const QList<PaymentSheetModel::SplitRow>& rows = m_model->splitRows();
    bool sameRows = rows.size() == m_rows.size();
    for (qsizetype index = 0; sameRows && index < rows.size(); ++index)
        sameRows = rows[index].id == m_rows[index].id;

    if (!sameRows) {
        // A row's own Remove button may be what asked: its widgets go once the click is over.
        for (const SplitRowWidgets& old : std::as_const(m_rows)) {
            QWidget* line = old.method->parentWidget();
            line->hide();
            line->deleteLater();
        }
        m_rows.clear();
        QStringList methodLabels;
        for (PaymentMethodType method : PaymentMethodTypes::all)
            methodLabels << PaymentMethodTypes::label(method);
        for (const PaymentSheetModel::SplitRow& row : rows) {
            auto* line = new QWidget(m_pages->widget(modeIndex(Mode::split)));
            auto* grid = new QGridLayout(line);
            grid->setContentsMargins(0, 0, 0, 0);
            grid->setHorizontalSpacing(8);
            grid->setVerticalSpacing(4);
            SplitRowWidgets widgets{row.id,
                                    new QComboBox(line),
                                    moneyField(line),
                                    moneyField(line),
                                    nullptr,
                                    new QPushButton(QStringLiteral("Remove"), line),
                                    new ErrorLabel(line)};
            widgets.method->addItems(methodLabels);
            widgets.method->setCurrentIndex(methodIndex(row.method));
            widgets.amount->setText(row.amountText);
            widgets.tendered->setText(row.tenderedText);
            keepReturnForTheSheet(widgets.remove);
            const QStringList captions{QStringLiteral("Method"), QStringLiteral("Amount"),
                                       QStringLiteral("Tendered")};
            const QList<QWidget*> fields{widgets.method, widgets.amount, widgets.tendered};
            for (int column = 0; column < fields.size(); ++column) {
                auto* caption = Theme::label(captions[column], Theme::Text::note, line);
                caption->setBuddy(fields[column]);
                fields[column]->setAccessibleName(captions[column]);
                grid->addWidget(caption, 0, column);
                grid->addWidget(fields[column], 1, column);
                grid->setColumnStretch(column, 1);
                if (fields[column] == widgets.tendered)
                    widgets.tenderedCaption = caption;
            }
            grid->addWidget(widgets.remove, 1, 3);
            grid->addWidget(widgets.problem, 2, 0, 1, 4);

            const QUuid id = row.id;
            connect(widgets.method, &QComboBox::currentIndexChanged, this, [this, id](int index) {
                if (m_model)
                    m_model->setSplitMethod(id, PaymentMethodTypes::all[size_t(index)]);
            });
            connect(widgets.amount, &QLineEdit::textEdited, this, [this, id](const QString& text) {
                if (m_model)
                    m_model->setSplitAmountText(id, text);
            });
            connect(widgets.tendered, &QLineEdit::textEdited, this, [this, id](const QString& text) {
                if (m_model)
                    m_model->setSplitTenderedText(id, text);
            });
            connect(widgets.remove, &QPushButton::clicked, this, [this, id] {
                if (!m_model)
                    return;
                m_model->removeSplitRow(id);
                focusMode();
            });
            m_scanner->watch(widgets.method);
            m_scanner->watch(widgets.amount);
            m_scanner->watch(widgets.tendered);
            m_rowsLayout->addWidget(line);
            m_rows << widgets;
        }
        fitToCurrentPage(m_pages);
        fitHeight();
    }

    for (qsizetype index = 0; index < rows.size(); ++index) {
        const PaymentSheetModel::SplitRow& row = rows[index];
        const SplitRowWidgets& widgets = m_rows[index];
        if (widgets.method->currentIndex() != methodIndex(row.method))
            widgets.method->setCurrentIndex(methodIndex(row.method));
        if (widgets.amount->text() != row.amountText)
            widgets.amount->setText(row.amountText);
        if (widgets.tendered->text() != row.tenderedText)
            widgets.tendered->setText(row.tenderedText);
        const bool cash = row.method == PaymentMethodType::cash;
        widgets.tendered->setVisible(cash);
        widgets.tenderedCaption->setVisible(cash);
        const std::optional<QString> problem = m_model->splitAmountProblem(row.id);
        widgets.problem->setMessage(problem ? problem : m_model->splitTenderedProblem(row.id));
    }
}

void PaymentSheetView::showPoints()
{
    const bool shown = m_model->showsPoints();
    m_points->setVisible(shown);
    if (!shown)
        return;
    m_pointsHeader->setText(m_model->pointsHeader());
    const std::optional<QString> worth = m_model->pointsWorth();
    m_pointsWorth->setText(worth.value_or(QString()));
    m_pointsWorth->setVisible(worth.has_value());

    const std::optional<QString> redeeming = m_model->redeemingText();
    m_redeeming->setText(redeeming.value_or(QString()));
    m_redeeming->setVisible(redeeming.has_value());
    m_removePoints->setVisible(redeeming.has_value());

    const QStringList offer = m_model->pointsOffer();
    m_pointsOffer->setText(offer.join(QLatin1Char('\n')));
    m_pointsOffer->setVisible(!offer.isEmpty());
    m_redeemRow->setVisible(m_model->offersRedeeming());
    m_useMost->setText(m_model->useMostText());
}

void PaymentSheetView::showReminder()
{
    if (!m_model)
        return;
    if (!m_model->showPointsReminder()) {
        if (m_reminder)
            m_reminder->close();
        return;
    }
    if (m_reminder)
        return;
    const QString title = m_model->pointsReminderTitle();
    m_reminder = new QMessageBox(QMessageBox::Information, title, title, QMessageBox::NoButton, this);
    m_reminder->setAttribute(Qt::WA_DeleteOnClose);
    m_reminder->setWindowModality(Qt::WindowModal);
    m_reminder->setInformativeText(m_model->pointsReminderText());
    QPushButton* redeem = m_reminder->addButton(QStringLiteral("Redeem Points"), QMessageBox::RejectRole);
    QPushButton* without =
        m_reminder->addButton(QStringLiteral("Complete Without Points"), QMessageBox::AcceptRole);
    // Return and Escape go back to the sheet: going on without the points must be chosen.
    m_reminder->setDefaultButton(redeem);
    m_reminder->setEscapeButton(redeem);
    connect(m_reminder, &QMessageBox::buttonClicked, this, [this, without](QAbstractButton* button) {
        // The box closes itself once the click is over.
        m_reminder = nullptr;
        if (!m_model)
            return;
        if (button == without) {
            m_model->completeWithoutPoints();
            return;
        }
        m_model->closePointsReminder();
        if (m_model->offersRedeeming())
            focusToReplace(m_pointsField);
    });
    m_reminder->open();
}

void PaymentSheetView::refuseScan()
{
    showError(scanRefusedMessage());
}

void PaymentSheetView::primaryAction()
{
    if (!m_model || m_model->complete() || m_model->showPointsReminder())
        return;
    focusMode();
}

void PaymentSheetView::reject()
{
    // Cancelling hands the sheet back to the workspace, which lets go of the model.
    if (m_model && !m_finished)
        m_model->cancel();
    finish(QDialog::Rejected);
}

void PaymentSheetView::finish(int result)
{
    if (m_finished)
        return;
    m_finished = true;
    if (m_reminder)
        m_reminder->close();
    QDialog::done(result);
}
