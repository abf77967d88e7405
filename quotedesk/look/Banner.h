#pragma once

#include <QList>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <functional>

class QLabel;
class QPushButton;
class QToolButton;

namespace QuoteDesk
{

/// What a banner tells.
enum class BannerKind {
    Info, ///< news
    Ok,   ///< done
    Warn, ///< to be done
    Error ///< did not work
};

/// The content of a banner.
struct BannerText {
    BannerKind kind = BannerKind::Info;
    QString text;              ///< one sentence, or two short ones; plain text
    QString action;            ///< the caption of the only button; "" for none
    std::function<void()> act; ///< what the button does; it may throw
    QString topic;             ///< a banner replaces the one with the same topic; "" is no topic
};

/// A message in its place: a picture, a sentence, the step that mends it, and a button that closes it. Escape
/// closes the banner that has the keyboard. Screen readers announce a banner when it appears.
class Banner : public QWidget
{
    Q_OBJECT
public:
    explicit Banner(const BannerText &content, QWidget *parent = nullptr);
    ~Banner() override;
    const BannerText &content() const { return m_content; }

    QPushButton *actionButton() const { return m_action; } ///< Null without an action.
    QToolButton *closeButton() const { return m_close; }

Q_SIGNALS:
    /// The banner has served: its action was done, it was closed, or its time is over.
    void closed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    friend class BannerStack;
    void act();
    void endTime();
    void retranslate();

    BannerText m_content;
    QLabel *m_text;
    QPushButton *m_action = nullptr;
    QToolButton *m_close;
    QTimer m_time;
};

/// The banners of a page. The newest is on top. Two are shown; others wait until one of the two is closed.
/// News and what is done disappear by themselves, unless the pointer or the keyboard is on the banner.
class BannerStack : public QWidget
{
    Q_OBJECT
public:
    explicit BannerStack(QWidget *parent = nullptr);
    ~BannerStack() override;

    /// Shows a banner on top. The stack owns it, and deletes it when it is closed. A banner with the same
    /// kind and text, or with the same topic, is replaced.
    Banner *showBanner(const BannerText &content);
    /// Closes the banner of @p topic; nothing happens when there is none.
    void dismiss(const QString &topic);
    /// Closes every banner.
    void clear();
    /// The banners, the newest first; those that wait are hidden.
    const QList<Banner *> &banners() const { return m_banners; }
    /// The time after which news disappear, in milliseconds; at first 8000.
    void setShownTime(int milliseconds);

private:
    void remove(Banner *banner);
    void arrange();

    QList<Banner *> m_banners;
    int m_shownTime = 8000;
};

} // namespace QuoteDesk
