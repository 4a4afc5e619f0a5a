#include "ui/products/newcategorysheet.h"

#include "stock/productsviewmodel.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/style/theme.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QIcon swatchIcon(const QColor& colour)
{
    QPixmap pixmap(14, 14);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(colour);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(pixmap.rect().adjusted(1, 1, -1, -1));
    return QIcon(pixmap);
}
} // namespace

const std::vector<NewCategorySheet::Swatch>& NewCategorySheet::swatches()
{
    static const std::vector<Swatch> all{
        {"Grey", "#8E8E93"},   {"Red", "#FF3B30"},  {"Orange", "#FF9500"}, {"Yellow", "#FFCC00"},
        {"Green", "#34C759"},  {"Teal", "#30B0C7"}, {"Blue", "#007AFF"},   {"Indigo", "#5856D6"},
        {"Purple", "#AF52DE"}, {"Pink", "#FF2D55"}, {"Brown", "#A2845E"},
    };
    return all;
}

NewCategorySheet::NewCategorySheet(ProductsViewModel& model, OnCreate onCreate, QWidget* parent)
    : QDialog(parent)
    , m_model(model)
    , m_onCreate(std::move(onCreate))
    , m_name(new QLineEdit(this))
    , m_color(new QComboBox(this))
    , m_error(new ErrorLabel(this))
{
    const QString title = QStringLiteral("New Category");
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setFixedWidth(400);
    for (const Swatch& swatch : swatches())
        m_color->addItem(swatchIcon(QColor(QLatin1String(swatch.hex))), QString::fromLatin1(swatch.name),
                         QString::fromLatin1(swatch.hex));

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    m_create = buttons->addButton(QStringLiteral("Create Category"), QDialogButtonBox::AcceptRole);
    m_create->setDefault(true);
    Theme::markPrimary(m_create);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(12);
    layout->addWidget(Theme::label(title, Theme::Text::heading, this));
    addLabelledField(layout, QStringLiteral("Category name"), m_name);
    addLabelledField(layout, QStringLiteral("Color"), m_color);
    layout->addWidget(m_error);
    layout->addSpacing(4);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // Not through accepted(): the sheet closes only once the category is made.
    connect(m_create, &QPushButton::clicked, this, &NewCategorySheet::create);
}

void NewCategorySheet::create()
{
    const Creation<Category> made = m_model.createCategory(m_name->text(), m_color->currentData().toString());
    m_error->setMessage(made.errorMessage);
    if (!made.record) {
        m_name->setFocus();
        adjustSize();
        return;
    }
    m_onCreate(made.record);
    accept();
}
