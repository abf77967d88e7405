#include "toolkit/LookChanges.h"

#include "toolkit/Look.h"

#include <QEvent>
#include <QLayout>
#include <QWidget>

#include <algorithm>
#include <cstring>
#include <utility>

namespace Zel
{

LookChanges::LookChanges(QObject *object) : QObject(object)
{
    const auto *const layout = qobject_cast<QLayout *>(object);
    QObject *const watched = layout ? layout->parentWidget() : object;
    if (watched)
        watched->installEventFilter(this);
}

LookChanges::~LookChanges() = default;

LookChanges &LookChanges::Of(QObject *object)
{
    LookChanges *const changes = Find(object);
    return changes ? *changes : *new LookChanges(object); // owned by the object
}

LookChanges *LookChanges::Find(const QObject *object)
{
    return object->findChild<LookChanges *>(QString(), Qt::FindDirectChildrenOnly);
}

LookChanges::Change *LookChanges::find(const char *property)
{
    const auto found = std::find_if(m_changes.begin(), m_changes.end(), [property](const Change &change) {
        return std::strcmp(change.property, property) == 0;
    });
    return found == m_changes.end() ? nullptr : &*found;
}

void LookChanges::Set(const char *property, const QVariant &value)
{
    if (!find(property))
        m_changes.push_back({property, parent()->property(property)});
    if (parent()->property(property) != value)
        parent()->setProperty(property, value);
}

QVariant LookChanges::Designed(const char *property) const
{
    const Change *const change = const_cast<LookChanges *>(this)->find(property); // NOLINT
    return change ? change->designed : QVariant();
}

bool LookChanges::SetDesigned(const char *property, const QVariant &value)
{
    Change *const change = find(property);
    if (change)
        change->designed = value;
    return change != nullptr;
}

void LookChanges::Restore()
{
    const std::vector<Change> changes = std::exchange(m_changes, {});
    // The geometry last, because the limits of the size apply to it.
    for (const bool geometry : {false, true}) {
        for (const Change &change : changes) {
            if ((std::strcmp(change.property, "geometry") == 0) == geometry)
                parent()->setProperty(change.property, change.designed);
        }
    }
}

bool LookChanges::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::StyleChange && CurrentLook() == Look::Designed)
        Restore();
    return QObject::eventFilter(watched, event);
}

} // namespace Zel
