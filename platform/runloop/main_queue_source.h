#pragma once

namespace platform {

class MainQueue;

/// Lets whoever runs GLib's default main context on the main thread drain `queue`, before sources of lower
/// priority. Both live as long as the process.
void attachToDefaultContext(MainQueue& queue);

}
