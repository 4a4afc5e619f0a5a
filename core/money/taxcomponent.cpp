#include "money/taxcomponent.h"

#include <QStringList>

#include <charconv>
#include <cmath>

// The shortest text that reads back as the same double: 0.15 stays "0.15", not 0.1499999...
static QString shareText(double share)
{
    char buffer[32];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, share);
    Q_ASSERT(error == std::errc());
    return QString::fromLatin1(buffer, end - buffer);
}

QString TaxComponent::encode(const std::vector<TaxComponent>& components)
{
    QStringList lines;
    lines.reserve(qsizetype(components.size()));
    for (const TaxComponent& component : components)
        lines << component.label + u'|' + shareText(component.share);
    return lines.join(u'\n');
}

std::vector<TaxComponent> TaxComponent::decode(const QString& text)
{
    std::vector<TaxComponent> components;
    const QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        const QStringList pieces = line.split(u'|');
        if (pieces.size() != 2)
            continue;
        bool ok = false;
        const double share = pieces[1].toDouble(&ok);
        // "nan" and "inf" parse, but would poison every total they reach.
        if (!ok || !std::isfinite(share))
            continue;
        components.push_back({pieces[0], share});
    }
    return components;
}
