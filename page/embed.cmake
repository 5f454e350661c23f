# cmake -D OUT=FILE.cpp -P embed.cmake HTML CSS JS...
# Puts the style and the scripts in the place of their marks in the page and writes the page as two
# lists of string literals: what stands in front of the data and what stands behind it. A literal
# holds at most CHUNK bytes, as compilers limit their length.
set(CHUNK 8000)

# The files behind the name of this script on the command line.
set(files)
set(is_file FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE ${last})
    if(is_file)
        list(APPEND files "${CMAKE_ARGV${i}}")
    elseif("${CMAKE_ARGV${i}}" MATCHES "embed\\.cmake$")
        set(is_file TRUE)
    endif()
endforeach()

list(POP_FRONT files html)
file(READ "${html}" page)
foreach(file IN LISTS files)
    file(READ "${file}" text)
    if(file MATCHES "\\.css$")
        string(APPEND style "${text}")
    else()
        string(APPEND script "${text}\n")
    endif()
endforeach()
string(REPLACE "@STYLE@" "${style}" page "${page}")
string(REPLACE "@SCRIPT@" "${script}" page "${page}")

function(literals name text out)
    set(result "extern const std::vector<std::string_view> ${name} = {\n")
    while(NOT text STREQUAL "")
        string(LENGTH "${text}" length)
        set(end ${length})
        if(length GREATER CHUNK)
            string(SUBSTRING "${text}" 0 ${CHUNK} piece)
            string(FIND "${piece}" "\n" end REVERSE)
            math(EXPR end "${end} + 1")
        endif()
        string(SUBSTRING "${text}" 0 ${end} piece)
        string(SUBSTRING "${text}" ${end} -1 text)
        string(APPEND result "    R\"PAGE(${piece})PAGE\",\n")
    endwhile()
    set(${out} "${result}};\n" PARENT_SCOPE)
endfunction()

string(FIND "${page}" "@DATA@" at)
string(SUBSTRING "${page}" 0 ${at} head)
math(EXPR at "${at} + 6")
string(SUBSTRING "${page}" ${at} -1 tail)
literals(PAGE_HEAD "${head}" head_text)
literals(PAGE_TAIL "${tail}" tail_text)
file(WRITE "${OUT}.new" "// Made from page/report.html and its parts.
#include <string_view>
#include <vector>

namespace scan695::page {

${head_text}
${tail_text}
}  // namespace scan695::page
")
file(RENAME "${OUT}.new" "${OUT}")
