#pragma once

#include <QString>

namespace QuoteDesk
{

/// Files with clients' data are readable for their owner only: files have mode 0600 and folders 0700,
/// whatever the umask is. On Windows the permissions of the user's own folder ensure this; there the
/// functions only create what is missing.

/// Creates the folder and its missing parents; returns false when that fails. An existing folder keeps its
/// permissions.
bool makePrivateFolder(const QString &path);
/// Creates an empty file unless one exists, also as the target of a dangling link; returns false when that
/// fails.
bool makePrivateFile(const QString &path);
/// Removes the permissions of group and others from an existing file or folder. The owner's permissions are
/// not extended, and files of other owners are not changed.
void keepPrivate(const QString &path);

} // namespace QuoteDesk
