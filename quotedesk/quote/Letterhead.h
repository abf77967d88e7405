#pragma once

#include <QImage>
#include <QString>

namespace QuoteDesk
{

/// The adviser and the firm, as they stand at the head of a printout. All parts may be blank.
struct Letterhead {
    /// The longest entry, in characters.
    static constexpr int LongestEntry = 300;

    QString firm;
    QString adviser;
    QString licence; ///< the firm's or the adviser's licence number
    QString address; ///< up to five lines
    QString telephone;
    QString email;
    QImage logo;

    bool isEmpty() const;
    friend bool operator==(const Letterhead &, const Letterhead &) = default;

    /// The letterhead of new printouts.
    static const Letterhead &current();
    static void setCurrent(const Letterhead &letterhead);

    /// Reads a picture for the logo, reduced to a size that suffices for print. Throws Exception with the
    /// file and the reason.
    static QImage readLogo(const QString &path);
};

} // namespace QuoteDesk
