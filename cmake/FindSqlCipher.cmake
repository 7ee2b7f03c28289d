# SqlCipher::SqlCipher: the encrypted engine, linked statically.
#
# The shared library would give every sqlite3_* symbol of the process to itself, whichever SQLite a part of the process
# was built with; the static one, with its symbols kept in, meets nobody.
find_path(SqlCipher_INCLUDE_DIR sqlcipher/sqlite3.h)
find_library(SqlCipher_LIBRARY libsqlcipher.a)
find_library(SqlCipher_CRYPTO crypto)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(SqlCipher REQUIRED_VARS SqlCipher_LIBRARY SqlCipher_INCLUDE_DIR SqlCipher_CRYPTO)

if(SqlCipher_FOUND AND NOT TARGET SqlCipher::SqlCipher)
  add_library(SqlCipher::SqlCipher STATIC IMPORTED)
  set_target_properties(SqlCipher::SqlCipher PROPERTIES
    IMPORTED_LOCATION "${SqlCipher_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${SqlCipher_INCLUDE_DIR}"
    INTERFACE_COMPILE_DEFINITIONS SQLITE_HAS_CODEC
    INTERFACE_LINK_LIBRARIES "${SqlCipher_CRYPTO};dl;pthread"
    INTERFACE_LINK_OPTIONS "LINKER:--exclude-libs,libsqlcipher.a")
endif()
mark_as_advanced(SqlCipher_INCLUDE_DIR SqlCipher_LIBRARY SqlCipher_CRYPTO)
