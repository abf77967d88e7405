#pragma once

#include "desk/Language.h"

#include <QList>
#include <QString>
#include <QUrl>

namespace QuoteDesk
{

/// The pages of the manual that is embedded in the program: docs/manual/<language>/<name>.md.
namespace Manual
{
/// The names of the pages, in the order of the contents.
QStringList pages();
/// The address of a page for a text browser.
QUrl address(const QString &page, Language language);
/// The page at an address; blank when the address is none of a page.
QString pageAt(const QUrl &address);
/// The page as Markdown; blank for an unknown one.
QString text(const QString &page, Language language);
/// The heading of the page.
QString title(const QString &page, Language language);
} // namespace Manual

} // namespace QuoteDesk
