# Writes a module's sheet for QT_SCALE_FACTOR 2 ("<name>_4K.qss", which the style loader picks at
# that factor) from its plain sheet.
#
#   cmake -DSKIN=<skin> -DPLAIN=<plain sheet> -DSCALED=<scaled sheet> -P ScaledSheet.cmake
#
# Qt multiplies every length of a style sheet by the scale factor itself, so the scaled sheet keeps
# the plain sheet's lengths and image paths: a length doubled here would be doubled twice on the
# screen. Only the opening comment is replaced, to say what the file is; it also keeps the two texts
# apart, so that a loaded style never holds the other scale's sheet.

foreach(var SKIN PLAIN SCALED)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "ScaledSheet.cmake: ${var} is not set")
    endif()
endforeach()

file(READ "${PLAIN}" text)
get_filename_component(plain_name "${PLAIN}" NAME)
set(head "/* Tree panel of the ${SKIN} skin at a screen scale of 2, written at build time from
   ${plain_name}. Qt scales every length of a sheet by QT_SCALE_FACTOR itself: the lengths here
   are those of the plain sheet. */")

# The plain sheet's own opening comment gives way to the one above.
string(FIND "${text}" "/*" comment_start)
if(comment_start EQUAL 0)
    string(FIND "${text}" "*/" comment_end)
    if(comment_end LESS 0)
        message(FATAL_ERROR "${PLAIN}: the opening comment is not closed")
    endif()
    math(EXPR body_start "${comment_end} + 2")
    string(SUBSTRING "${text}" ${body_start} -1 body)
else()
    set(body "\n\n${text}")
endif()

file(WRITE "${SCALED}" "${head}${body}")
