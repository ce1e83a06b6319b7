# What the two libraries stand on, all from the distribution (see docs/dependencies.md).
find_package(Threads REQUIRED)
find_package(ZLIB 1.2.5 REQUIRED)
find_package(OpenSSL 3 REQUIRED COMPONENTS Crypto)
find_package(ICU 70 REQUIRED COMPONENTS uc i18n)
find_package(EXPAT REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0 gio-unix-2.0)

set(LUM_PLATFORM_LIBRARIES Threads::Threads ICU::uc ICU::i18n EXPAT::EXPAT PkgConfig::GIO)
set(LUM_FOUNDATION_LIBRARIES ZLIB::ZLIB OpenSSL::Crypto)
