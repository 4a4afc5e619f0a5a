#include "ui/pos/cartlinerow.h"

#include "money/quantity.h"
#include "pos/posviewmodel.h"
#include "ui/style/theme.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

QPushButton* stepButton(const QString& text, const QString& name, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setAccessibleName(name);
    button->setFixedSize(32, 30);
    Theme::setKind(button, "step");
    // The scan field keeps the keyboard: a tap here mustn't take it.
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

} // namespace

CartLineRow::CartLineRow(POSViewModel& pos, const CartLine& line, QWidget* parent)
    : QFrame(parent)
    , m_pos(pos)
    , m_lineID(line.id)
    , m_name(Theme::label(QString(), Theme::Text::strong, this))
    , m_quantity(Theme::label(QString(), Theme::Text::note, this))
    , m_amount(Theme::label(QString(), Theme::Text::strong, this))
    , m_notes(Theme::label(QString(), Theme::Text::note, this))
    , m_menu(new QToolButton(this))
{
    setObjectName(QStringLiteral("cartLine"));
    setAttribute(Qt::WA_StyledBackground);
    m_name->setMinimumWidth(60);
    m_name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_amount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    auto* top = new QHBoxLayout;
    top->addWidget(m_name, 1);
    top->addWidget(m_amount);

    auto* controls = new QHBoxLayout;
    controls->setSpacing(6);
    if (POSViewModel::isMeasured(line)) {
        m_measured = new QPushButton(this);
        m_measured->setAccessibleName(POSViewModel::quantityMenuText(line));
        m_measured->setFocusPolicy(Qt::NoFocus);
        controls->addWidget(m_measured);
        connect(m_measured, &QPushButton::clicked, this, [this] { m_pos.editQuantity(m_lineID); });
    } else {
        m_minus = stepButton(QStringLiteral("−"), QStringLiteral("One fewer"), this);
        m_plus = stepButton(QStringLiteral("+"), QStringLiteral("One more"), this);
        controls->addWidget(m_minus);
        controls->addWidget(m_plus);
        connect(m_minus, &QPushButton::clicked, this, [this] {
            m_pos.stepQuantity(m_lineID, -1);
            Q_EMIT done();
        });
        connect(m_plus, &QPushButton::clicked, this, [this] {
            m_pos.stepQuantity(m_lineID, 1);
            Q_EMIT done();
        });
    }
    controls->addWidget(m_quantity, 1);
    controls->addWidget(m_notes);

    m_menu->setText(QStringLiteral("⋯"));
    m_menu->setAccessibleName(QStringLiteral("Line actions"));
    m_menu->setToolTip(QStringLiteral("Change quantity, discount or price, or remove the line"));
    m_menu->setPopupMode(QToolButton::InstantPopup);
    m_menu->setFocusPolicy(Qt::NoFocus);
    m_menu->setObjectName(QStringLiteral("lineMenu"));
    auto* menu = new QMenu(m_menu);
    connect(menu->addAction(POSViewModel::quantityMenuText(line)), &QAction::triggered, this,
            [this] { m_pos.editQuantity(m_lineID); });
    connect(menu->addAction(QStringLiteral("Line Discount…")), &QAction::triggered, this,
            [this] { Q_EMIT discountRequested(m_lineID); });
    connect(menu->addAction(QStringLiteral("Change Price…")), &QAction::triggered, this,
            [this] { Q_EMIT priceRequested(m_lineID); });
    menu->addSeparator();
    connect(menu->addAction(QStringLiteral("Remove")), &QAction::triggered, this, [this] {
        m_pos.removeLine(m_lineID);
        Q_EMIT done();
    });
    m_menu->setMenu(menu);
    controls->addWidget(m_menu);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 8, 10, 8);
    layout->setSpacing(4);
    layout->addLayout(top);
    layout->addLayout(controls);

    if (POSViewModel::isService(line)) {
        m_staff = new QComboBox(this);
        m_staff->setAccessibleName(QStringLiteral("Who did this service"));
        m_staff->setFocusPolicy(Qt::NoFocus);
        auto* who = new QHBoxLayout;
        who->addWidget(Theme::label(QStringLiteral("Who did this service"), Theme::Text::note, this));
        who->addWidget(m_staff, 1);
        layout->addLayout(who);
        fillStaff(line);
        connect(m_staff, &QComboBox::activated, this, [this](int index) {
            const QUuid id = m_staff->itemData(index).toUuid();
            Ref<StaffMember> chosen;
            for (const Ref<StaffMember>& member : m_pos.activeStaff()) {
                if (member->id() == id)
                    chosen = member;
            }
            m_pos.setStaff(m_lineID, chosen);
            Q_EMIT done();
        });
    }
    showLine(line);
}

void CartLineRow::fillStaff(const CartLine& line)
{
    const QSignalBlocker blocker(m_staff);
    m_staff->clear();
    m_staff->addItem(QStringLiteral("Nobody"), QUuid());
    for (const Ref<StaffMember>& member : m_pos.activeStaff())
        m_staff->addItem(member->name(), member->id());
    // Someone no longer active still shows as chosen on a recalled sale.
    if (line.staffID && m_staff->findData(*line.staffID) < 0)
        m_staff->addItem(line.staffName, *line.staffID);
    m_staff->setCurrentIndex(line.staffID ? m_staff->findData(*line.staffID) : 0);
}

void CartLineRow::showLine(const CartLine& line)
{
    m_name->setText(line.product->name());
    m_name->setToolTip(line.product->name());
    m_quantity->setText(m_pos.lineQuantityText(line));
    m_amount->setText(m_pos.lineAmountText(line));
    const QStringList notes = m_pos.lineNotes(line);
    m_notes->setText(notes.join(QStringLiteral(" · ")));
    m_notes->setVisible(!notes.isEmpty());
    if (m_measured)
        m_measured->setText(Quantity::format(line.quantity, line.product->sellingUnit()));
    if (m_staff) {
        const int index = line.staffID ? m_staff->findData(*line.staffID) : 0;
        if (index != m_staff->currentIndex())
            fillStaff(line);
    }
}

void CartLineRow::setSelected(bool selected)
{
    if (m_selected == selected)
        return;
    m_selected = selected;
    Theme::setKind(this, selected ? "selected" : "");
}

void CartLineRow::mousePressEvent(QMouseEvent* event)
{
    QFrame::mousePressEvent(event);
    Q_EMIT chosen(m_lineID);
    Q_EMIT done();
}
