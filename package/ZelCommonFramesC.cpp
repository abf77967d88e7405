#include "package/ZelCommonFramesC.h"

#include "data/Format.h"
#include "funds/fra_FundAllocation.h"
#include "package/Classes.h"
#include "package/Lifecycle_p.h"
#include "package/NativeWindow_p.h"
#include "package/ZelCommonFrames.h"
#include "toolkit/TApplication.h"

#include <QAbstractEventDispatcher>
#include <QDir>
#include <QMetaEnum>
#include <QMetaMethod>
#include <QPluginLoader>
#include <QPointer>
#include <QThread>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

struct ZelFrame {
    QPointer<QWidget> widget;         ///< a form may delete itself
    std::unique_ptr<QWindow> parent;  ///< the host's window, where there is one
    std::unique_ptr<QObject> onClick; ///< watches the frame's window
    quintptr parentWindow = 0;
    int calls = 0; ///< operations that have not returned
};

struct ZelTable {
    std::vector<TFieldDef> fields;
    std::vector<QVariantList> rows;
    bool lent = false; ///< belongs to a running provider and must not be destroyed by it
};

namespace
{
/// An error with the result that the failed call returns.
class Failure : public Exception
{
public:
    Failure(ZelResult result, const QString &message) : Exception(message), m_result(result) {}
    ZelResult result() const noexcept { return m_result; }

private:
    ZelResult m_result;
};

// A plain array, because a thread_local variable with a destructor would keep the library loaded until its
// threads end.
constinit thread_local std::array<char, 1024> lastError{};

void keepError(const char *message) noexcept
{
    // Does not cut inside a UTF-8 character.
    std::size_t length = std::min(std::strlen(message), lastError.size() - 1);
    while (message[length] != '\0' && length > 0 &&
           (static_cast<unsigned char>(message[length]) & 0xC0) == 0x80)
        --length;
    std::memcpy(lastError.data(), message, length);
    lastError[length] = '\0';
}

/// Runs the body of one interface function and turns an exception into a result and an error text.
template <typename Body> ZelResult answer(Body &&body) noexcept
{
    try {
        body();
        return ZEL_OK;
    } catch (const Failure &failure) {
        keepError(failure.what());
        return failure.result();
    } catch (const std::exception &error) {
        keepError(error.what());
    } catch (...) {
        keepError("An unknown error occurred.");
    }
    return ZEL_FAILED;
}

/// The objects of the interface between Initialize and Finalize.
struct Session {
    std::unique_ptr<TApplication> application; ///< only when the host has none
    TLocalConnection connection;
    std::vector<std::unique_ptr<ZelFrame>> frames;
    std::vector<std::unique_ptr<ZelTable>> tables;
    int asked = 0;   ///< providers that are running
    int serving = 0; ///< calls of ZelProcessEvents that have not returned

    ~Session()
    {
        // These must be freed before the application object.
        tables.clear();
        frames.clear();
    }
};
constinit Session *session = nullptr;

bool onAnotherThread()
{
    return QCoreApplication::instance() && QThread::currentThread() != qApp->thread();
}

Session &current()
{
    if (GetUnitCounter(0) >= 0)
        throw Failure(ZEL_NOT_INITIALIZED, u"The package is not initialised"_s);
    if (onAnotherThread())
        throw Failure(ZEL_WRONG_THREAD, u"The package is used on another thread than its first frame"_s);
    if (!session)
        session = new Session;
    return *session;
}

QString textOf(const char *text, const char *what)
{
    if (!text)
        throw Failure(ZEL_BAD_VALUE, u"The %1 is a null pointer"_s.arg(QLatin1String(what)));
    // fromUtf8 would silently replace invalid bytes.
    if (!QUtf8StringView(text).isValidUtf8())
        throw Failure(ZEL_BAD_VALUE, u"The %1 is not UTF-8"_s.arg(QLatin1String(what)));
    return QString::fromUtf8(text);
}

template <typename Pointer> void wantPointer(Pointer pointer, const char *what)
{
    if (!pointer)
        throw Failure(ZEL_BAD_VALUE, u"The %1 is a null pointer"_s.arg(QLatin1String(what)));
}

/// The object of a handle. An invalid handle causes ZEL_NO_HANDLE and is never dereferenced.
template <typename Owned, typename Handle>
auto findHandle(Owned &owned, const Handle *handle, const char *what)
{
    const auto found = std::ranges::find_if(owned, [handle](const auto &one) { return one.get() == handle; });
    if (found == owned.end())
        throw Failure(ZEL_NO_HANDLE, u"There is no %1 behind that handle"_s.arg(QLatin1String(what)));
    return found;
}

ZelTable &tableOf(ZelTable *handle)
{
    return **findHandle(current().tables, handle, "table");
}

/// The frame of a handle. Throws Failure when the frame or its parent window no longer exists.
ZelFrame &frameOf(ZelFrame *handle)
{
    ZelFrame &frame = **findHandle(current().frames, handle, "frame");
    if (!frame.widget)
        throw Failure(ZEL_NO_HANDLE, u"The frame has gone away"_s);
    if (frame.parent && !Zel::NativeWindow::Exists(frame.parentWindow))
        throw Failure(ZEL_NO_WINDOW, u"The frame's parent window is gone"_s);
    return frame;
}

/// @p frame as an allocation frame. Throws Failure for another class.
TfraFundAllocation &allocationOf(const ZelFrame &frame)
{
    auto *allocation = qobject_cast<TfraFundAllocation *>(frame.widget);
    if (!allocation)
        throw Failure(ZEL_NO_NAME, u"%1 has no list of funds"_s.arg(
                                       QLatin1String(frame.widget->metaObject()->className())));
    return *allocation;
}

/// Counts the running calls during which the host may call the interface again, for example an operation that
/// opens a dialog.
class Running
{
public:
    explicit Running(int &count) : m_count(count) { ++m_count; }
    explicit Running(ZelFrame &frame) : Running(frame.calls) {}
    ~Running() { --m_count; }
    Running(const Running &) = delete;
    Running &operator=(const Running &) = delete;

private:
    int &m_count;
};

// --- the application object

/// The reason why no window can be opened; empty when one can. Must be called before the application object
/// is created, because Qt ends the program when it has no display.
QString displayProblem()
{
    const QString asked = QString::fromLocal8Bit(qgetenv("QT_QPA_PLATFORM"));
    const QStringList names = (asked.isEmpty() ? Zel::NativeWindow::DefaultPlugin() : asked)
                                  .split(QLatin1Char(';'), Qt::SkipEmptyParts);
    QStringList folders = QCoreApplication::libraryPaths();
    std::ranges::transform(folders, folders.begin(),
                           [](const QString &folder) { return folder + u"/platforms"_s; });
    if (const QString own = QString::fromLocal8Bit(qgetenv("QT_QPA_PLATFORM_PLUGIN_PATH")); !own.isEmpty())
        folders.prepend(own);
    QString problem;
    for (const QString &entry : names) {
        const QString name = entry.section(QLatin1Char(':'), 0, 0).trimmed();
        problem = u"The plugin %1 is in none of these folders: %2"_s.arg(Zel::NativeWindow::PluginFile(name),
                                                                         folders.join(u", "_s));
        for (const QString &folder : std::as_const(folders)) {
            const QString file = folder + QLatin1Char('/') + Zel::NativeWindow::PluginFile(name);
            if (!QFile::exists(file))
                continue;
            if (QPluginLoader plugin(file); !plugin.load())
                problem = plugin.errorString();
            else if (!Zel::NativeWindow::Answers(name))
                problem = u"There is no display to open a window on (%1)"_s.arg(name);
            else
                return {};
            break;
        }
    }
    return problem;
}

void wantApplication(Session &open)
{
    if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        return;
    if (QCoreApplication::instance())
        throw Failure(ZEL_NO_DISPLAY, u"The host's application object is one without windows"_s);
    if (const QString own = Zel::NativeWindow::OwnPluginFolder(); !own.isEmpty())
        QCoreApplication::addLibraryPath(own);
    if (const QString problem = displayProblem(); !problem.isEmpty())
        throw Failure(ZEL_NO_DISPLAY, problem);
    // The application object keeps references to count and arguments.
    static int count = 1;
    static std::array<char, 16> name{"ZelCommonFrames"};
    static std::array<char *, 2> arguments{name.data(), nullptr};
    open.application = std::make_unique<TApplication>(count, arguments.data());
    QApplication::setQuitOnLastWindowClosed(false);
}

/// Processes pending events; when there are none, waits up to @p milliseconds for one.
void serve(int milliseconds)
{
    QAbstractEventDispatcher &loop = *QAbstractEventDispatcher::instance();
    if (!loop.processEvents(QEventLoop::AllEvents) && milliseconds > 0) {
        // QCoreApplication::processEvents with a time limit never waits. A timer ends a wait of the
        // dispatcher.
        QTimer limit;
        limit.setSingleShot(true);
        limit.start(milliseconds);
        loop.processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents(QEventLoop::AllEvents, milliseconds);
}

// --- frames in the host's windows

/// Takes the keyboard focus on a click, because the system does not activate a window embedded in another
/// program's window.
class KeyboardOnClick : public QObject
{
public:
    explicit KeyboardOnClick(QWindow *window) { window->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (auto *window = qobject_cast<QWindow *>(watched);
            window && event->type() == QEvent::MouseButtonPress && QGuiApplication::focusWindow() != window)
            Zel::NativeWindow::TakeKeyboard(window);
        return false;
    }
};

void standIn(ZelFrame &frame, quintptr parentWindow)
{
    if (!Zel::NativeWindow::Exists(parentWindow))
        throw Failure(ZEL_NO_WINDOW, u"There is no window %1"_s.arg(parentWindow));
    frame.parent.reset(QWindow::fromWinId(static_cast<WId>(parentWindow)));
    if (!frame.parent)
        throw Failure(ZEL_NO_WINDOW, u"This window system does not let a frame stand in a host's window"_s);
    frame.parentWindow = parentWindow;
    frame.widget->setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    frame.widget->winId();
    frame.widget->windowHandle()->setParent(frame.parent.get());
    frame.onClick = std::make_unique<KeyboardOnClick>(frame.widget->windowHandle());
}

// --- names and values

struct Target {
    QObject *object;
    QByteArray name;
};

/// The component that the dotted @p path names, and the last name in the path (a property or operation).
Target targetOf(const ZelFrame &frame, const QString &path)
{
    QStringList steps = path.split(QLatin1Char('.'));
    const QString last = steps.takeLast();
    QObject *object = frame.widget;
    for (const QString &step : std::as_const(steps)) {
        QObject *next = object->findChild<QObject *>(step, Qt::FindDirectChildrenOnly);
        if (!next)
            next = object->findChild<QObject *>(step);
        if (!next || step.isEmpty())
            throw Failure(ZEL_NO_NAME, u"%1 has no component %2"_s.arg(
                                           QLatin1String(object->metaObject()->className()), step));
        object = next;
    }
    return {object, last.toUtf8()};
}

QMetaProperty propertyOf(const Target &target)
{
    const QMetaObject *meta = target.object->metaObject();
    const int index = meta->indexOfProperty(target.name.constData());
    if (index < 0)
        throw Failure(ZEL_NO_NAME, u"%1 has no property %2"_s.arg(QLatin1String(meta->className()),
                                                                  QString::fromUtf8(target.name)));
    return meta->property(index);
}

std::optional<bool> truthOf(const QString &text)
{
    for (const char *yes : {"true", "1"})
        if (text.compare(QLatin1String(yes), Qt::CaseInsensitive) == 0)
            return true;
    for (const char *no : {"false", "0"})
        if (text.compare(QLatin1String(no), Qt::CaseInsensitive) == 0)
            return false;
    return std::nullopt;
}

/// @p text as a value of @p type; @p names is the enumeration for a value of an enumeration type.
QVariant valueOf(const QString &text, QMetaType type, const QMetaEnum &names = {})
{
    QVariant value;
    if (names.isValid()) {
        bool known = false;
        const int number = names.isFlag() ? names.keysToValue(text.toUtf8().constData(), &known)
                                          : names.keyToValue(text.toUtf8().constData(), &known);
        if (known)
            value = QVariant(type, &number);
    } else if (type == QMetaType::fromType<bool>()) {
        if (const auto truth = truthOf(text))
            value = *truth;
    } else if (type == QMetaType::fromType<Currency>()) {
        if (Currency amount; TryStrToCurr(text, amount))
            value = amount.toVariant();
    } else if (QVariant converted(text); type.isValid() && converted.convert(type)) {
        value = converted;
    }
    if (!value.isValid())
        throw Failure(ZEL_BAD_VALUE,
                      u"\"%1\" is not a value of the type %2"_s.arg(text, QLatin1String(type.name())));
    return value;
}

QString textOf(const QVariant &value, const QMetaEnum &names = {})
{
    if (names.isValid()) {
        const int number = *static_cast<const int *>(value.constData());
        return QString::fromUtf8(names.isFlag() ? names.valueToKeys(number)
                                                : QByteArray(names.valueToKey(number)));
    }
    if (value.metaType() == QMetaType::fromType<Currency>())
        return value.value<Currency>().toString();
    if (value.isValid() && !value.canConvert<QString>())
        throw Failure(ZEL_BAD_VALUE,
                      u"A value of the type %1 has no text"_s.arg(QLatin1String(value.metaType().name())));
    return value.toString();
}

QMetaEnum namesOf(const QMetaProperty &property)
{
    return property.isEnumType() ? property.enumerator() : QMetaEnum();
}

// Accessors and operations are called through qt_metacall, so that their exceptions do not pass through Qt's
// code, which does not support exceptions.
void *place(QVariant &value, QMetaType type)
{
    return type == QMetaType::fromType<QVariant>() ? &value : value.data();
}

void writeProperty(const Target &target, const QMetaProperty &property, QVariant value)
{
    if (!property.isWritable())
        throw Failure(ZEL_NO_NAME, u"The property %1 is read-only"_s.arg(QLatin1String(property.name())));
    int status = -1;
    int flags = 0;
    std::array<void *, 4> arguments{place(value, property.metaType()), &value, &status, &flags};
    target.object->qt_metacall(QMetaObject::WriteProperty, property.propertyIndex(), arguments.data());
}

QVariant readProperty(const Target &target, const QMetaProperty &property)
{
    const QMetaType type = property.metaType();
    QVariant value = type == QMetaType::fromType<QVariant>() ? QVariant() : QVariant(type);
    int status = -1;
    std::array<void *, 3> arguments{place(value, type), &value, &status};
    target.object->qt_metacall(QMetaObject::ReadProperty, property.propertyIndex(), arguments.data());
    return value;
}

/// The enumeration of an argument's type; invalid for another type.
QMetaEnum namesOf(const QObject &object, QMetaType type)
{
    if (!(type.flags() & QMetaType::IsEnumeration))
        return {};
    const QByteArray name = QByteArray(type.name());
    const QMetaObject *meta = type.metaObject() ? type.metaObject() : object.metaObject();
    return meta->enumerator(meta->indexOfEnumerator(name.mid(name.lastIndexOf(':') + 1).constData()));
}

QVariant call(const Target &target, const QStringList &texts)
{
    const QMetaObject *meta = target.object->metaObject();
    const auto wanted = [&](const QMetaMethod &method) {
        return method.access() == QMetaMethod::Public && method.name() == target.name &&
               method.parameterCount() == texts.size() &&
               (method.methodType() == QMetaMethod::Slot || method.methodType() == QMetaMethod::Method);
    };
    std::optional<Failure> refused;
    for (int index = meta->methodCount() - 1; index >= 0; --index) {
        const QMetaMethod method = meta->method(index);
        if (!wanted(method))
            continue;
        std::vector<QVariant> values;
        try {
            for (int i = 0; i < method.parameterCount(); ++i) {
                const QMetaType type = method.parameterMetaType(i);
                values.push_back(valueOf(texts.at(i), type, namesOf(*target.object, type)));
            }
        } catch (const Failure &failure) {
            refused = failure; // another overload may accept the arguments
            continue;
        }
        const QMetaType resultType = method.returnMetaType();
        QVariant result = resultType == QMetaType::fromType<void>() ? QVariant() : QVariant(resultType);
        std::vector<void *> arguments{resultType == QMetaType::fromType<void>() ? nullptr
                                                                                : place(result, resultType)};
        for (int i = 0; i < method.parameterCount(); ++i)
            arguments.push_back(place(values[static_cast<std::size_t>(i)], method.parameterMetaType(i)));
        target.object->qt_metacall(QMetaObject::InvokeMetaMethod, index, arguments.data());
        return result;
    }
    if (refused)
        throw *refused;
    throw Failure(ZEL_NO_NAME, u"%1 has no operation %2 with %3 arguments"_s
                                   .arg(QLatin1String(meta->className()), QString::fromUtf8(target.name))
                                   .arg(texts.size()));
}

void handBack(const QString &text, char *buffer, size_t size, size_t *length)
{
    const QByteArray bytes = text.toUtf8();
    const auto needed = static_cast<size_t>(bytes.size());
    if (length)
        *length = needed;
    if (size == 0)
        return;
    wantPointer(buffer, "buffer");
    buffer[0] = '\0';
    if (needed >= size)
        throw Failure(ZEL_BUFFER_TOO_SMALL,
                      u"The text has %1 bytes and a zero, there is room for %2"_s.arg(needed).arg(size));
    std::memcpy(buffer, bytes.constData(), needed + 1);
}

void handBack(const QList<TAllocationRow> &rows, ZelFund *funds, size_t capacity, size_t *count,
              const char *place)
{
    const auto length = static_cast<size_t>(rows.size());
    if (count)
        *count = length;
    const size_t fitting = std::min(length, capacity);
    if (fitting > 0)
        wantPointer(funds, place);
    std::transform(rows.cbegin(), rows.cbegin() + static_cast<qsizetype>(fitting), funds,
                   [](const TAllocationRow &row) {
                       return ZelFund{row.FundID, row.Amount.raw(), row.Percent.raw()};
                   });
    if (length > capacity)
        throw Failure(ZEL_BUFFER_TOO_SMALL,
                      u"There are %1 funds and room for %2"_s.arg(length).arg(capacity));
}

// --- tables

TFieldDef fieldOf(const QString &text)
{
    static constexpr std::array types{
        std::pair{"integer", TFieldType::Integer},   std::pair{"largeint", TFieldType::LargeInt},
        std::pair{"float", TFieldType::Float},       std::pair{"currency", TFieldType::Currency},
        std::pair{"boolean", TFieldType::Boolean},   std::pair{"date", TFieldType::Date},
        std::pair{"datetime", TFieldType::DateTime}, std::pair{"string", TFieldType::String}};
    const qsizetype colon = text.lastIndexOf(QLatin1Char(':'));
    const auto type = std::ranges::find_if(types, [word = text.mid(colon + 1)](const auto &entry) {
        return word == QLatin1String(entry.first);
    });
    if (colon <= 0 || type == types.end())
        throw Failure(ZEL_BAD_VALUE, u"\"%1\" is no field such as FundID:integer"_s.arg(text));
    return {text.left(colon), type->second};
}

TDataPacket packetOf(const ZelTable &table)
{
    TTableBuilder rows(QList<TFieldDef>(table.fields.begin(), table.fields.end()));
    rows.Reserve(static_cast<int>(table.rows.size()));
    for (const QVariantList &row : table.rows)
        rows.AddRow(row);
    return TDataPacket(rows.Finish());
}

QStringList textsOf(const char *const *texts, size_t count, const char *what)
{
    QStringList list;
    if (count > 0)
        wantPointer(texts, what);
    for (size_t i = 0; i < count; ++i)
        list.append(textOf(texts[i], what));
    return list;
}

/// Requests rows from the host's provider.
TDataPacket ask(const QString &name, ZelProvider provider, void *context, const TParams &params)
{
    Session &open = current();
    std::vector<QByteArray> texts;
    for (int i = 0; i < params.Count(); ++i) {
        texts.push_back(params[i].Name.toUtf8());
        texts.push_back(params[i].AsString().toUtf8());
    }
    std::vector<const char *> names;
    std::vector<const char *> values;
    for (std::size_t i = 0; i < texts.size(); i += 2) {
        names.push_back(texts[i].constData());
        values.push_back(texts[i + 1].constData());
    }
    ZelTable *table = open.tables.emplace_back(std::make_unique<ZelTable>()).get();
    table->lent = true;
    const Running asking(open.asked);
    struct Given {
        Session &open;
        ZelTable *table;
        ~Given()
        {
            std::erase_if(open.tables, [this](const auto &one) { return one.get() == table; });
        }
    } given{open, table};
    const ZelResult result = provider(context, names.data(), values.data(), names.size(), table);
    if (result < 0)
        throw EDatabaseError(u"The provider %1 answered with the failure %2"_s.arg(name).arg(result));
    return packetOf(*table);
}
} // namespace

namespace Zel::Lifecycle
{
ZelResult Refuse(ZelResult result, const char *reason) noexcept
{
    keepError(reason);
    return result;
}

bool OnAnotherThread() noexcept
{
    return onAnotherThread();
}

bool Serving() noexcept
{
    return session && session->serving > 0;
}

const char *FrameAlive() noexcept
{
    // All widgets are searched, because a host with Qt creates frames without this interface, and a dialog
    // opened by a frame can outlive the frame. Without an application object there are no widgets.
    if (qobject_cast<QApplication *>(QCoreApplication::instance())) {
        const QWidgetList widgets = QApplication::allWidgets();
        for (const QWidget *widget : widgets) {
            for (const QMetaObject *meta = widget->metaObject(); meta; meta = meta->superClass()) {
                if (std::ranges::any_of(FrameClasses(), [meta](const TFrameClass &entry) {
                        return entry.MetaObject == meta;
                    }))
                    return widget->metaObject()->className();
            }
        }
    }
    return session && !session->frames.empty() ? "ZelFrame" : nullptr;
}

void Close() noexcept
{
    delete std::exchange(session, nullptr);
}
} // namespace Zel::Lifecycle

const char *ZelLastError()
{
    return lastError.data();
}

ZelResult ZelProcessEvents(int32_t milliseconds)
{
    return answer([=] {
        Session &open = current();
        if (!QCoreApplication::instance())
            return;
        const Running serving(open.serving);
        serve(milliseconds);
        // This call is the message loop, so objects waiting for deleteLater are deleted now. A running
        // provider delays this, because a frame is waiting for it.
        if (open.asked == 0)
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
}

ZelResult ZelSetProvider(const char *name, ZelProvider provider, void *context)
{
    return answer([=] {
        const QString known = textOf(name, "provider's name");
        if (provider)
            current().connection.RegisterProvider(
                known, [=](const TParams &params) { return ask(known, provider, context, params); });
        else
            current().connection.RegisterProvider(known, [known](const TParams &) -> TDataPacket {
                throw EDatabaseError(u"There is no provider %1"_s.arg(known));
            });
    });
}

ZelResult ZelFrameCreate(const char *className, uintptr_t parentWindow, ZelFrame **frame)
{
    return answer([=] {
        wantPointer(frame, "place for the frame");
        *frame = nullptr;
        Session &open = current();
        const QString name = textOf(className, "class name");
        const TFrameClass *found = FindFrameClass(name);
        if (!found)
            throw Failure(ZEL_NO_CLASS, u"The package has no class %1"_s.arg(name));
        wantApplication(open);
        auto made = std::make_unique<ZelFrame>();
        std::unique_ptr<QWidget> widget(found->Create(nullptr));
        made->widget = widget.get();
        if (parentWindow != 0)
            standIn(*made, parentWindow);
        *frame = open.frames.emplace_back(std::move(made)).get();
        static_cast<void>(widget.release()); // ZelFrameDestroy deletes the widget
    });
}

ZelResult ZelFrameDestroy(ZelFrame *frame)
{
    return answer([=] {
        Session &open = current();
        const auto found = findHandle(open.frames, frame, "frame");
        if ((*found)->calls > 0 || open.asked > 0)
            throw Failure(ZEL_FAILED, u"An operation of the frame has not come back yet"_s);
        const std::unique_ptr<ZelFrame> dying = std::move(*found);
        open.frames.erase(found);
        delete dying->widget;
    });
}

ZelResult ZelFrameSetBounds(ZelFrame *frame, int32_t left, int32_t top, int32_t width, int32_t height)
{
    return answer([=] {
        QWidget &widget = *frameOf(frame).widget;
        if (width < 0 || height < 0)
            throw Failure(ZEL_BAD_VALUE, u"A frame is not %1 x %2 pixels"_s.arg(width).arg(height));
        const qreal scale = widget.devicePixelRatioF();
        const auto scaled = [scale](int32_t pixels) { return qRound(pixels / scale); };
        widget.setGeometry(scaled(left), scaled(top), scaled(width), scaled(height));
    });
}

ZelResult ZelFrameShow(ZelFrame *frame, int32_t visible)
{
    return answer([=] { frameOf(frame).widget->setVisible(visible != 0); });
}

ZelResult ZelFrameFocus(ZelFrame *frame)
{
    return answer([=] {
        const ZelFrame &focused = frameOf(frame);
        if (focused.parent)
            Zel::NativeWindow::TakeKeyboard(focused.widget->windowHandle());
        else
            focused.widget->activateWindow();
    });
}

ZelResult ZelFrameWindow(ZelFrame *frame, uintptr_t *window)
{
    return answer([=] {
        wantPointer(window, "place for the window");
        *window = static_cast<uintptr_t>(frameOf(frame).widget->winId());
    });
}

ZelResult ZelFrameSetProperty(ZelFrame *frame, const char *name, const char *value)
{
    return answer([=] {
        ZelFrame &owner = frameOf(frame);
        const Target target = targetOf(owner, textOf(name, "property's name"));
        const QMetaProperty property = propertyOf(target);
        const Running running(owner);
        writeProperty(target, property,
                      valueOf(textOf(value, "value"), property.metaType(), namesOf(property)));
    });
}

ZelResult ZelFrameGetProperty(ZelFrame *frame, const char *name, char *value, size_t size, size_t *length)
{
    return answer([=] {
        ZelFrame &owner = frameOf(frame);
        const Target target = targetOf(owner, textOf(name, "property's name"));
        const QMetaProperty property = propertyOf(target);
        handBack(textOf(readProperty(target, property), namesOf(property)), value, size, length);
    });
}

ZelResult ZelFrameSetTable(ZelFrame *frame, const char *name, ZelTable *table)
{
    return answer([=] {
        ZelFrame &owner = frameOf(frame);
        const Target target = targetOf(owner, textOf(name, "property's name"));
        const QMetaProperty property = propertyOf(target);
        if (property.metaType() != QMetaType::fromType<QVariant>())
            throw Failure(ZEL_BAD_VALUE,
                          u"The property %1 takes no rows"_s.arg(QString::fromUtf8(target.name)));
        const Running running(owner);
        writeProperty(target, property, packetOf(tableOf(table)).ToVariant());
    });
}

ZelResult ZelFrameCall(ZelFrame *frame, const char *operation, const char *const *arguments, size_t count,
                       char *result, size_t size, size_t *length)
{
    return answer([=] {
        ZelFrame &owner = frameOf(frame);
        const Target target = targetOf(owner, textOf(operation, "operation's name"));
        const QStringList texts = textsOf(arguments, count, "argument");
        QString text;
        {
            const Running running(owner);
            text = textOf(call(target, texts));
        }
        handBack(text, result, size, length);
    });
}

ZelResult ZelFrameSetFunds(ZelFrame *frame, const ZelFund *funds, size_t count, int32_t productGroup)
{
    return answer([=] {
        ZelFrame &owner = frameOf(frame);
        TfraFundAllocation &allocation = allocationOf(owner);
        if (count > 0)
            wantPointer(funds, "list of funds");
        std::vector<TFundRec> records;
        for (size_t i = 0; i < count; ++i)
            records.push_back({funds[i].FundID, nullptr, Currency::fromRaw(funds[i].Amount),
                               Currency::fromRaw(funds[i].Percent)});
        TFunds list(std::move(records));
        const Running running(owner);
        allocation.SetupFundAllocation(list, productGroup, &current().connection);
    });
}

ZelResult ZelFrameGetFunds(ZelFrame *frame, ZelFund *funds, size_t capacity, size_t *count)
{
    return answer([=] {
        handBack(allocationOf(frameOf(frame)).Allocation(), funds, capacity, count, "place for the funds");
    });
}

ZelResult ZelFrameSetAllocation(ZelFrame *frame, const ZelFund *funds, size_t count, int32_t productGroup,
                                ZelFund *leftOut, size_t capacity, size_t *leftOutCount)
{
    return answer([=] {
        if (leftOutCount)
            *leftOutCount = 0;
        ZelFrame &owner = frameOf(frame);
        TfraFundAllocation &allocation = allocationOf(owner);
        if (count > 0)
            wantPointer(funds, "list of funds");
        if (capacity > 0)
            wantPointer(leftOut, "place for the funds that are left out");
        QList<TAllocationRow> rows;
        for (size_t i = 0; i < count; ++i)
            rows.append(
                {funds[i].FundID, Currency::fromRaw(funds[i].Amount), Currency::fromRaw(funds[i].Percent)});
        const Running running(owner);
        TFunds none;
        allocation.SetupFundAllocation(none, productGroup, &current().connection);
        handBack(allocation.SetAllocation(rows), leftOut, capacity, leftOutCount,
                 "place for the funds that are left out");
    });
}

ZelResult ZelTableCreate(ZelTable **table)
{
    return answer([=] {
        wantPointer(table, "place for the table");
        *table = nullptr;
        *table = current().tables.emplace_back(std::make_unique<ZelTable>()).get();
    });
}

ZelResult ZelTableSetFields(ZelTable *table, const char *const *fields, size_t count)
{
    return answer([=] {
        ZelTable &target = tableOf(table);
        if (!target.fields.empty())
            throw Failure(ZEL_BAD_VALUE, u"The table has fields already"_s);
        std::vector<TFieldDef> defs;
        for (const QString &field : textsOf(fields, count, "field"))
            defs.push_back(fieldOf(field));
        target.fields = std::move(defs);
    });
}

ZelResult ZelTableAddRow(ZelTable *table, const char *const *values, size_t count)
{
    return answer([=] {
        ZelTable &target = tableOf(table);
        if (count != target.fields.size())
            throw Failure(ZEL_BAD_VALUE,
                          u"A row of %1 values for %2 fields"_s.arg(count).arg(target.fields.size()));
        if (count > 0)
            wantPointer(values, "row");
        QVariantList row;
        for (size_t i = 0; i < count; ++i)
            row.append(values[i] ? QVariant(textOf(values[i], "row's value")) : QVariant());
        // Adding the row to a temporary builder reports an unsuitable value in this call.
        TTableBuilder check(QList<TFieldDef>(target.fields.begin(), target.fields.end()));
        try {
            check.AddRow(row);
        } catch (const EConvertError &error) {
            throw Failure(ZEL_BAD_VALUE, error.message());
        }
        target.rows.push_back(std::move(row));
    });
}

ZelResult ZelTableDestroy(ZelTable *table)
{
    return answer([=] {
        Session &open = current();
        const auto found = findHandle(open.tables, table, "table");
        if ((*found)->lent)
            throw Failure(ZEL_FAILED, u"A provider's table belongs to the package"_s);
        open.tables.erase(found);
    });
}
