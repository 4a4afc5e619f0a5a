#include "ui/controls/segmentedcontrol.h"

#include "ui/style/theme.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPushButton>

namespace {
// The theme's padding of a segment on both sides, and its borders.
constexpr int segmentPadding = 2 * 14 + 2;
} // namespace

SegmentedControl::SegmentedControl(const QStringList& labels, QWidget* parent)
    : QWidget(parent)
    , m_group(new QButtonGroup(this))
{
    Q_ASSERT(!labels.isEmpty());
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (int index = 0; index < labels.size(); ++index) {
        auto* button = new QPushButton(labels[index], this);
        button->setCheckable(true);
        Theme::setKind(button, "segment");
        button->setProperty("position", index == 0                   ? QStringLiteral("first")
                                        : index == labels.size() - 1 ? QStringLiteral("last")
                                                                     : QStringLiteral("middle"));
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        // The chosen segment's text is bold: room for that, so that choosing one never clips it.
        QFont bold = button->font();
        bold.setWeight(QFont::DemiBold);
        button->setMinimumWidth(QFontMetrics(bold).horizontalAdvance(labels[index]) + segmentPadding);
        m_group->addButton(button, index);
        layout->addWidget(button);
    }
    m_group->button(0)->setChecked(true);
    connect(m_group, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
        if (checked)
            Q_EMIT currentIndexChanged(id);
    });
}

int SegmentedControl::currentIndex() const
{
    return m_group->checkedId();
}

void SegmentedControl::setCurrentIndex(int index)
{
    m_group->button(index)->setChecked(true);
}

QWidget* SegmentedControl::segment(int index) const
{
    return m_group->button(index);
}
