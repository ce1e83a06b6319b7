#pragma once

#include "platform/files/node_system.h"
#include "platform/files/reference_node.h"

namespace platform {

// References come into being here. All answer 0 or a negative errno. Without a free descriptor a reference is
// made all the same; then it knows its object by path and identity alone until it can be opened.

/// A reference to what `path` names; a symbolic link at its end is not followed.
int openReference(const std::string& path, NodeRef& made);

/// A reference to an entry of an open folder, which is at `folderPath`.
int openReferenceIn(int folder, const std::string& folderPath, const std::string& name, NodeRef& made);

/// A reference to what the links at the end of `path` lead to.
int openReferenceTarget(const std::string& path, NodeRef& made);

/// Whether an answer of open() and its like is that the process has no descriptor for it.
bool isOutOfDescriptors(int result);
/// Whether NodeSystem::openReal() could not tell: there is a link on the way, the system is too old, or a
/// filter on its calls, as containers have, refuses this one.
bool isUntold(int result);

/// Who the object of a descriptor is.
int identify(int descriptor, FileIdentity& identity);

/// Path text. The path above "/" is "/" itself; paths are absolute, without slashes at their end.
std::string folderOf(const std::string& path);
/// The same place by a path without links, if there is that folder; a link at the end stays as it is.
std::string withoutLinks(const std::string& path);
std::string_view nameOf(std::string_view path);
std::string joined(const std::string& folder, std::string_view name);

}
