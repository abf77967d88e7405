#pragma once

#include "export/zel_toolkit_export.h"

#include <QIcon>
#include <QList>
#include <QObject>
#include <QSize>
#include <QStringList>

/// A list of pictures that views use by index.
class ZEL_TOOLKIT_EXPORT TImageList : public QObject
{
    Q_OBJECT
public:
    explicit TImageList(QObject *parent = nullptr);
    ~TImageList() override;
    /// Appends a picture and returns its index.
    int Add(const QIcon &icon);
    /// Appends the pictures of those names (see GlyphIcon) in order.
    void AddGlyphs(const QStringList &names);
    int Count() const { return static_cast<int>(m_icons.size()); } ///< The number of pictures.
    /// The picture at @p index; a null icon outside 0..Count-1. -1 means "no picture".
    QIcon Icon(int index) const;
    QSize Size() const { return {16, 16}; } ///< pixels at scale 1

private:
    QList<QIcon> m_icons;
};
