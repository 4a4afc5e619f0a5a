#include "ui/products/newcategorysheet.h"

#include <QComboBox>
#include <QPainter>
#include <QPixmap>
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
    : NewRecordSheet(QStringLiteral("New Category"), QStringLiteral("Create Category"),
                     QStringLiteral("Category name"), model, std::move(onCreate), parent)
    , m_color(new QComboBox(this))
{
    for (const Swatch& swatch : swatches())
        m_color->addItem(swatchIcon(QColor(QLatin1String(swatch.hex))), QString::fromLatin1(swatch.name),
                         QString::fromLatin1(swatch.hex));
    addLabelledField(form(), QStringLiteral("Color"), m_color);
}

Creation<Category> NewCategorySheet::create()
{
    return model().createCategory(nameField()->text(), m_color->currentData().toString());
}
