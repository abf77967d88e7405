#pragma once

#include <QString>

namespace QuoteDesk
{

/// What holds data of clients is its owner's alone: files of 0600 in a folder of 0700, whatever the session's
/// umask says. On Windows the rights of the user's own folder do that, and these operations only make what is
/// missing.

/// Makes the folder and those above it that are missing; false when that fails. A folder that is there stays
/// as it is.
bool makePrivateFolder(const QString &path);
/// Makes an empty file where there is none, or where a link leads to none; false when that fails.
bool makePrivateFile(const QString &path);
/// Takes the rights of everybody but the owner from a file or folder that is there. Rights of the owner are
/// not given, and what belongs to somebody else stays as it is.
void keepPrivate(const QString &path);

} // namespace QuoteDesk
