# cmake -DVERSION=… -DCHANGELOG=… -DTEMPLATE=… -DOUTPUT=… [-DWEBSITE=…] -P WriteMetainfo.cmake
# Writes what software centres show. The releases are those of the CHANGELOG, the newest of which must
# be this version. Pictures can only be shown from the web: without the address under which the source
# tree is published there are none.

file(STRINGS ${CHANGELOG} headings ENCODING UTF-8 REGEX "^## ")
set(newest "")
set(VORQ_RELEASES "")
foreach(heading IN LISTS headings)
  if(NOT heading MATCHES "^## ([0-9]+\\.[0-9]+\\.[0-9]+), ([0-9-]+)$")
    message(FATAL_ERROR "${CHANGELOG}: \"${heading}\" is not \"## VERSION, YEAR-MONTH-DAY\"")
  endif()
  if(NOT newest)
    set(newest ${CMAKE_MATCH_1})
  endif()
  string(APPEND VORQ_RELEASES
    "\n    <release version=\"${CMAKE_MATCH_1}\" date=\"${CMAKE_MATCH_2}\"/>")
endforeach()
if(NOT newest STREQUAL VERSION)
  message(FATAL_ERROR "${CHANGELOG} begins with the release \"${newest}\", CMakeLists.txt says ${VERSION}")
endif()

set(VORQ_WEB "")
if(WEBSITE)
  set(VORQ_WEB "
  <url type=\"homepage\">${WEBSITE}</url>
  <url type=\"help\">${WEBSITE}/docs/guide.md</url>
  <screenshots>")
  set(type " type=\"default\"")
  foreach(picture
      "panel-dark=The answer beside the text that was highlighted"
      "panel-light=The same in the light theme"
      "attach-dark=Pictures, documents and notes go along with a question")
    string(REGEX MATCH "^([^=]+)=(.+)$" parts "${picture}")
    string(APPEND VORQ_WEB "
    <screenshot${type}>
      <caption>${CMAKE_MATCH_2}</caption>
      <image type=\"source\">${WEBSITE}/docs/images/guide/${CMAKE_MATCH_1}.png</image>
    </screenshot>")
    set(type "")
  endforeach()
  string(APPEND VORQ_WEB "\n  </screenshots>")
endif()
configure_file(${TEMPLATE} ${OUTPUT} @ONLY)
