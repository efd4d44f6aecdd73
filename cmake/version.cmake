# The version of the project is that of its header, for project().
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../include/vdrzax/channel.h version_lines
     REGEX "^#define VDRZAX_VERSION_(MAJOR|MINOR|PATCH) [0-9]+$")
list(TRANSFORM version_lines REPLACE "^.* " "")
list(JOIN version_lines . vdrzax_version)
