#pragma once

#include <filesystem>

#include "platform/posix/FileDescriptor.h"

namespace tavelo::posix {

/// Makes `folder` and its missing parents. Only the user may enter the new ones, whatever the umask. False if
/// the folder does not exist afterwards.
bool makeFolders(const std::filesystem::path& folder);

/// Opens `folder`, which lies below `shared`, where other users may write too. Every folder on the way down
/// from `shared` must be a real one, the user's own and closed to everyone else; no link is followed. Makes
/// the missing ones if `make` is set. Returns no descriptor if one of them does not fit.
FileDescriptor openClosedFolder(const std::filesystem::path& shared, const std::filesystem::path& folder,
                                bool make);

}  // namespace tavelo::posix
