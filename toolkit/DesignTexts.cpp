#include "toolkit/DesignTexts.h"

#include "toolkit/TApplication.h"

#include <QEvent>
#include <QMetaProperty>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace
{
constexpr const char *textProperties[] = {
    "text",      "caption",         "title",          "windowTitle",
    "toolTip",   "placeholderText", "accessibleName", "accessibleDescription",
    "statusTip", "whatsThis"};

/// Whether the property is a designed text. A text that users enter is not.
bool isDesigned(const QMetaProperty &property)
{
    return property.isWritable() && property.metaType() == QMetaType::fromType<QString>() &&
           !property.isUser();
}

/// The texts of a root and its descendants as the design last set them, and the function that sets them
/// again.
class Texts : public QObject
{
public:
    Texts(QWidget *root, std::function<void()> retranslate)
        : QObject(root), m_root(root), m_retranslate(std::move(retranslate))
    {
        m_texts = current();
        root->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_root && event->type() == QEvent::LanguageChange)
            GuardedCall([this] { translate(); });
        return QObject::eventFilter(watched, event);
    }

private:
    struct Text {
        QPointer<QObject> object;
        const char *property;
        QString value;
    };

    std::vector<Text> current() const
    {
        std::vector<Text> texts;
        QList<QObject *> objects = m_root->findChildren<QObject *>();
        objects.prepend(m_root);
        for (QObject *object : objects) {
            for (const char *name : textProperties) {
                const QMetaObject *type = object->metaObject();
                const int index = type->indexOfProperty(name);
                if (index >= 0 && isDesigned(type->property(index)))
                    texts.push_back({object, name, object->property(name).toString()});
            }
        }
        return texts;
    }

    void translate()
    {
        // Texts that differ from the design were set by the page.
        std::vector<Text> kept;
        for (const Text &text : m_texts) {
            if (text.object) {
                const QString value = text.object->property(text.property).toString();
                if (value != text.value)
                    kept.push_back({text.object, text.property, value});
            }
        }
        m_retranslate();
        m_texts = current();
        for (const Text &text : kept)
            text.object->setProperty(text.property, text.value);
    }

    QWidget *m_root;
    std::function<void()> m_retranslate;
    std::vector<Text> m_texts;
};
} // namespace

void Zel::KeepTranslated(QWidget *root, std::function<void()> retranslate)
{
    new Texts(root, std::move(retranslate)); // owned by the root
}
