#pragma once

#include "export/zel_toolkit_export.h"

#include <QObject>
#include <QVariant>

#include <vector>

namespace Zel
{

/// What the application look changes in one object. Each changed property keeps its designed value, which it
/// gets back as soon as the look is the designed one again.
class ZEL_TOOLKIT_EXPORT LookChanges : public QObject
{
    Q_OBJECT
public:
    /// The changes of @p object, a widget or the layout of one; made when there are none yet.
    static LookChanges &Of(QObject *object);
    /// The changes of @p object, nullptr when there are none.
    static LookChanges *Find(const QObject *object);
    ~LookChanges() override;

    /// Sets a property. Its value before the first change is kept as the designed one.
    void Set(const char *property, const QVariant &value);
    /// The designed value of a property that has been changed; an invalid variant for others.
    QVariant Designed(const char *property) const;
    /// Replaces the designed value of a property that has been changed; false for others.
    bool SetDesigned(const char *property, const QVariant &value);
    /// Sets all properties to their designed values.
    void Restore();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Change {
        const char *property; // a literal
        QVariant designed;
    };

    explicit LookChanges(QObject *object);
    Change *find(const char *property);

    std::vector<Change> m_changes;
};

} // namespace Zel
