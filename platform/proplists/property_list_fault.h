#pragma once

#include <string>
#include <utility>

namespace platform {

/// Thrown inside the readers and writers of property lists where one cannot go on; never leaves the room.
struct PropertyListFault {
    explicit PropertyListFault(std::string fault) : text(std::move(fault)) { }

    std::string text; ///< A sentence without a full stop, for the error's description.
};

}
