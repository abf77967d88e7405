#pragma once

#include "toolkit/TApplication.h"

#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QMetaProperty>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QStringList>
#include <QTest>
#include <QWidget>

/// Collects the messages that reach the application's exception report during its lifetime.
class ReportCatcher
{
public:
    ReportCatcher()
    {
        m_former = SetExceptionReport([this](const QString &message) { messages.append(message); });
    }
    ~ReportCatcher() { SetExceptionReport(m_former); }
    ReportCatcher(const ReportCatcher &) = delete;
    ReportCatcher &operator=(const ReportCatcher &) = delete;
    QStringList messages;

private:
    TExceptionReport m_former;
};

/// Shows a window and waits until it is painted and active. Returns false when one of the two does not
/// happen.
inline bool showActive(QWidget &window)
{
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowExposed(&window) && QTest::qWaitForWindowActive(&window);
}

/// Types @p word as one new word into a view with keyboard search. The view starts a new word after a pause
/// of keyboardInputInterval(); the changed interval ensures this pause before the word and prevents it inside
/// the word, however busy the machine is.
template <typename Target> void typeWord(Target *target, const QString &word)
{
    const int pause = QApplication::keyboardInputInterval();
    const auto back = qScopeGuard([pause] { QApplication::setKeyboardInputInterval(pause); });
    QApplication::setKeyboardInputInterval(0);
    QTest::qSleep(2);
    for (const QChar letter : word) {
        QTest::keyClick(target, letter.toLatin1());
        QApplication::setKeyboardInputInterval(600'000);
    }
}

/// Whether a disabled button shows a picture of another shape, not only of another colour. A dashed outline
/// has fewer opaque pixels than the normal picture.
inline bool hasDisabledPicture(const QIcon &icon)
{
    const auto points = [&icon](QIcon::Mode mode) {
        const QImage image = icon.pixmap(QSize(64, 64), mode).toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
        }
        return count;
    };
    const int normal = points(QIcon::Normal);
    if (normal < 100)
        QTest::qFail("the picture is next to empty", __FILE__, __LINE__);
    return points(QIcon::Disabled) < normal;
}

/// Moves the focus with Tab from the first of @p stops to the last, and with Shift+Tab back. Returns which
/// widget got the focus instead of the expected one; empty when all of them got it.
inline QString detourOfTab(const QList<QWidget *> &stops)
{
    stops.first()->setFocus();
    const auto press = [&stops](Qt::Key key, qsizetype stop) {
        QTest::keyClick(QApplication::focusWidget(), key);
        const QWidget *at = QApplication::focusWidget();
        if (at == stops.at(stop))
            return QString();
        return QStringLiteral("%1 instead of %2")
            .arg(at ? at->objectName() : QStringLiteral("nothing"), stops.at(stop)->objectName());
    };
    QString detour;
    for (qsizetype i = 1; detour.isEmpty() && i < stops.size(); ++i)
        detour = press(Qt::Key_Tab, i);
    for (qsizetype i = stops.size() - 2; detour.isEmpty() && i >= 0; --i)
        detour = press(Qt::Key_Backtab, i);
    return detour;
}

/// Sets a property to @p value twice and counts its notify signal. Returns what is wrong: the first write has
/// to emit the signal once and the second write not at all. Empty when both are right.
inline QString toldOnce(QObject &object, const char *name, const QVariant &value)
{
    const QMetaObject *const meta = object.metaObject();
    const QMetaProperty property = meta->property(meta->indexOfProperty(name));
    const QSignalSpy told(&object, property.notifySignal());
    for (const char *which : {"first", "second"}) {
        if (!property.write(&object, value))
            return QStringLiteral("%1 cannot be written").arg(QLatin1String(name));
        if (told.count() != 1)
            return QStringLiteral("%1 told %2 changes with the %3 writing")
                .arg(QLatin1String(name))
                .arg(told.count())
                .arg(QLatin1String(which));
    }
    return {};
}
