# Third-party libraries, all from the distribution (packaging/debian-packages.txt).

find_package(Qt6 6.4 REQUIRED COMPONENTS Core DBus Gui Network Pdf Qml Quick Svg Widgets)
find_package(QCoro6 0.8 REQUIRED COMPONENTS Core)
find_package(CURL REQUIRED)
find_package(simdjson REQUIRED)
find_package(ICU REQUIRED COMPONENTS i18n uc)
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
# inline marks of replies
pkg_check_modules(MD4C REQUIRED IMPORTED_TARGET md4c)
# X11: hot keys, windows of other programs and their pixels, selections
pkg_check_modules(Xcb REQUIRED IMPORTED_TARGET xcb xcb-composite xcb-ewmh xcb-keysyms xcb-randr
                  xcb-res xcb-shape xcb-shm xcb-xfixes xcb-xinput xcb-xtest)
# which of the user's keyboard layouts is active
pkg_check_modules(XkbCommon REQUIRED IMPORTED_TARGET xkbcommon-x11 xkbcommon)
if(VORQ_TESTS OR VORQ_FUZZ)
  find_package(GTest REQUIRED)
  find_package(Qt6 6.4 REQUIRED COMPONENTS QuickTest Test)
  # an HTTP client that shares no code with the gateway's server
  pkg_check_modules(CppHttplib REQUIRED IMPORTED_TARGET cpp-httplib)
endif()

# vorq-gateway
find_package(nlohmann_json REQUIRED)
find_package(SQLite3 REQUIRED)
find_package(Boost 1.81 REQUIRED)
pkg_check_modules(Postgres REQUIRED IMPORTED_TARGET libpq)
pkg_check_modules(Sodium REQUIRED IMPORTED_TARGET libsodium)

# Neither comes with a description for pkg-config or CMake.
foreach(library IN ITEMS Cld2=cld2=cld2/public/compact_lang_det.h Stemmer=stemmer=libstemmer.h)
  string(REPLACE "=" ";" parts ${library})
  list(GET parts 0 name)
  list(GET parts 1 file)
  list(GET parts 2 header)
  find_library(${name}_LIBRARY ${file} REQUIRED)
  find_path(${name}_INCLUDE_DIR ${header} REQUIRED)
  add_library(Vorq::${name} UNKNOWN IMPORTED)
  set_target_properties(Vorq::${name} PROPERTIES IMPORTED_LOCATION ${${name}_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${${name}_INCLUDE_DIR})
endforeach()
