#pragma once

#include <QAction>
#include <QList>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace QuoteDesk
{

/// One named group of a ribbon: a button for each of its actions.
class RibbonGroup : public QWidget
{
    Q_OBJECT
public:
    explicit RibbonGroup(QWidget *parent = nullptr);
    ~RibbonGroup() override;

    QString title() const;
    void setTitle(const QString &title);
    /// The actions, in order; none are owned. A separator is a line, an action that is not visible has no
    /// button, and a group without buttons is hidden.
    void setActions(const QList<QAction *> &actions);
    /// The button of an action; nullptr when it has none.
    QToolButton *buttonOf(const QAction *action) const;

    /// Captions below the pictures, or pictures alone.
    void setCaptionsShown(bool shown);
    /// How wide the group would be. Only measured: nothing changes, and no new layout is asked for.
    int widthWithCaptions(bool shown) const;

private:
    class Button;
    static Qt::ToolButtonStyle styleOf(const QToolButton &button, bool captions);

    QHBoxLayout *m_buttons;
    QLabel *m_title;
    QList<QAction *> m_actions; ///< Compared only.
    QList<Button *> m_buttonList;
    bool m_captions = true;
};

/// The band of groups above the pages of the main window. Where there is no room for the captions it shows
/// the pictures alone, whose tool tips say the same.
class Ribbon : public QWidget
{
    Q_OBJECT
public:
    explicit Ribbon(QWidget *parent = nullptr);
    ~Ribbon() override;

    /// Appends an empty group; the ribbon owns it.
    RibbonGroup *addGroup(const QString &name);
    QList<RibbonGroup *> groups() const { return m_groups; }
    QToolButton *buttonOf(const QAction *action) const;
    /// Decides anew how much there is room for; called when the groups have changed.
    void arrange();

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    int widthOfGroups(bool captions) const;

    QHBoxLayout *m_layout;
    QList<RibbonGroup *> m_groups;
};

} // namespace QuoteDesk
