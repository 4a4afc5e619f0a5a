#include "ui/pos/heldsalesview.h"

#include "money/currency.h"
#include "startup/sessionstore.h"
#include "ui/controls/cards.h"
#include "ui/controls/emptystate.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/scrollpage.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

HeldSalesView::HeldSalesView(ModelContext& context, SessionStore& session, RecallAction onRecall,
                             QWidget* parent)
    : QDialog(parent)
    , m_model(context)
    , m_session(session)
    , m_onRecall(std::move(onRecall))
    , m_error(new ErrorLabel(this))
    , m_pages(new QStackedWidget(this))
    , m_rows(new QVBoxLayout)
    , m_close(new QPushButton(QStringLiteral("Close"), this))
{
    setWindowTitle(QStringLiteral("Held Sales"));
    setWindowModality(Qt::WindowModal);
    setMinimumSize(520, 420);

    auto* list = new QWidget;
    auto* listColumn = new QVBoxLayout(list);
    listColumn->setContentsMargins(0, 0, 8, 0);
    m_rows->setSpacing(10);
    listColumn->addLayout(m_rows);
    listColumn->addStretch();
    m_pages->addWidget(makeScrollPage(list, this));
    m_pages->addWidget(makeEmptyState(
        QStringLiteral("No held sales"),
        QStringLiteral("Sales you hold from the POS workspace appear here to recall later."), this));

    auto* header = new QHBoxLayout;
    header->addWidget(Theme::label(QStringLiteral("Held Sales"), Theme::Text::heading, this));
    header->addStretch();
    header->addWidget(m_close);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(12);
    layout->addLayout(header);
    layout->addWidget(m_error);
    layout->addWidget(m_pages, 1);

    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);
    connect(&m_model, &ViewModel::errorMessageChanged, m_error,
            [this] { m_error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &HeldSalesModel::heldSalesChanged, this, &HeldSalesView::refresh);
    refresh();
}

bool HeldSalesView::isShowingNoHolds() const
{
    return m_pages->currentIndex() == 1;
}

// A handful of holds at most: rows of widgets, made again on each change.
void HeldSalesView::refresh()
{
    // Later, not now: the change may come from a click on a button of the row going.
    for (QWidget* row : std::as_const(m_rowWidgets)) {
        m_rows->removeWidget(row);
        row->hide();
        row->deleteLater();
    }
    m_rowWidgets.clear();
    m_recallButtons.clear();
    m_cancelButtons.clear();
    const QList<Ref<HeldSale>> held = m_model.activeHeldSales();
    for (const Ref<HeldSale>& hold : held) {
        QWidget* row = makeRow(hold);
        m_rows->addWidget(row);
        m_rowWidgets.append(row);
    }
    m_pages->setCurrentIndex(held.isEmpty() ? 1 : 0);
}

QWidget* HeldSalesView::makeRow(const Ref<HeldSale>& held)
{
    auto* card = new Card;
    auto* label = Theme::label(held->label(), Theme::Text::strong, card);
    label->setTextFormat(Qt::PlainText);
    auto* text = new QVBoxLayout;
    text->setSpacing(2);
    text->addWidget(label);
    text->addWidget(Theme::label(HeldSalesModel::itemsLine(*held), Theme::Text::note, card));
    if (!held->note().isEmpty()) {
        auto* note = Theme::label(held->note(), Theme::Text::note, card);
        note->setTextFormat(Qt::PlainText);
        text->addWidget(note);
    }
    const Ref<AppSettings> settings = m_session.settings();
    auto* subtotal = Theme::label(
        Currency::format(held->subtotal(), settings ? settings->currencySymbol() : Currency::fixedSign),
        Theme::Text::strong, card);
    auto* recall = new QPushButton(QStringLiteral("Recall"), card);
    Theme::markPrimary(recall);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), card);
    recall->setAccessibleName(QStringLiteral("Recall %1").arg(held->label()));
    cancel->setAccessibleName(QStringLiteral("Cancel %1").arg(held->label()));

    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    row->addLayout(text, 1);
    row->addWidget(subtotal);
    row->addSpacing(6);
    row->addWidget(cancel);
    row->addWidget(recall);
    card->content()->addLayout(row);

    connect(recall, &QPushButton::clicked, this, [this, held] {
        if (m_onRecall)
            m_onRecall(held);
    });
    connect(cancel, &QPushButton::clicked, this, [this, held] { m_model.cancel(held); });
    m_recallButtons.append(recall);
    m_cancelButtons.append(cancel);
    return card;
}
