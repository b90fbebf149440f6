# Makes a web page of a Japanese document: cmake -D CMARK_GFM=... -D SOURCE=x.md -D PAGE=x.html
# -P page.cmake. Headings get the names by which the documents link to them, and links between
# documents lead to their pages.
execute_process(COMMAND ${CMARK_GFM} --extension table --extension autolink ${SOURCE}
                OUTPUT_VARIABLE body COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "<h([1-6])>([^<]*)</h[1-6]>" "<h\\1 id=\"\\2\">\\2</h\\1>" body "${body}")
string(REGEX REPLACE "(href=\"[a-z-]+)\\.md([\"#])" "\\1.html\\2" body "${body}")
string(REGEX MATCH "<h1[^>]*>([^<]*)</h1>" heading "${body}")
set(title "${CMAKE_MATCH_1}")

# A heading or a picture that isn't there ends the build.
file(READ ${SOURCE} source)
cmake_path(GET SOURCE PARENT_PATH folder)
string(REGEX MATCHALL "\\((#|pictures/)[^)]+\\)" links "${source}")
foreach(link ${links})
  string(REGEX REPLACE "[()]" "" link "${link}")
  string(REPLACE "#" " id=\"" id "${link}")
  string(FIND "${body}" "${id}\"" place)
  if(link MATCHES "#" AND place EQUAL -1 OR NOT link MATCHES "#" AND NOT EXISTS ${folder}/${link})
    message(FATAL_ERROR "${SOURCE} links to ${link}, which is nowhere")
  endif()
endforeach()

# Wide tables are scrolled by themselves, not the page.
string(REPLACE "<table>" "<div class=\"table\"><table>" body "${body}")
string(REPLACE "</table>" "</table></div>" body "${body}")
file(WRITE ${PAGE} "<!DOCTYPE html>
<html lang=\"ja\">
<head>
<meta charset=\"utf-8\">
<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">
<title>${title}</title>
<link rel=\"stylesheet\" href=\"pages.css\">
</head>
<body>
${body}</body>
</html>
")
