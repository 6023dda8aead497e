# Checks that a built gameui library exports its public interface and nothing else.
#   cmake -DLIBRARY=<gameui.dll|libgameui.so> -DLISTER=<objdump|nm> -DDEMANGLER=<c++filt>
#         -DSOURCE_DIR=<the source tree> -P check-exports.cmake
# Public names come from the headers in include/ and services/include/: classes marked UI_API (with
# their static data members), free functions and globals marked UI_API, and namespaces of exported
# functions. An exported symbol must belong to one of them. Allowances that are not the library's own:
# instantiations in namespace std (the standard library gives them default visibility),
# AddressSanitizer's one-definition markers of exported data, and on Windows the RTTI records of every
# polymorphic class, which GCC exports from any DLL so that type identity holds across modules.
cmake_minimum_required(VERSION 3.16)

set(classes "")
set(unmarked "") # classes defined in a public header without UI_API
set(required "")
set(namespaces "")
foreach(dir "${SOURCE_DIR}/include" "${SOURCE_DIR}/services/include")
    file(GLOB headers "${dir}/*.h")
    foreach(header ${headers})
        file(STRINGS "${header}" lines)
        set(class "")
        set(scope "") # the namespace a line is in, with "::"
        foreach(line IN LISTS lines)
            if(line MATCHES "^([ \t]*)class UI_API ([A-Za-z_][A-Za-z0-9_]*)")
                if(CMAKE_MATCH_1 AND class)
                    set(name "${class}::${CMAKE_MATCH_2}") # a nested class
                else()
                    set(name "${scope}${CMAKE_MATCH_2}")
                    set(class "${name}")
                endif()
                list(APPEND classes "${name}")
            elseif(line MATCHES "^[ \t]*class ([A-Za-z_][A-Za-z0-9_]*)[^;]*$")
                list(APPEND unmarked "${CMAKE_MATCH_1} (${header})")
            elseif(line MATCHES "^namespace ([A-Za-z_][A-Za-z0-9_]*) {")
                list(APPEND namespaces "${CMAKE_MATCH_1}")
                set(scope "${CMAKE_MATCH_1}::")
            elseif(line MATCHES "^}[ \t]*(//.*)?$")
                set(scope "")
            elseif(NOT scope AND line MATCHES "^UI_API [^(]*[ *&]([A-Za-z_][A-Za-z0-9_]*)\\(")
                list(APPEND required "${CMAKE_MATCH_1}") # a free function
            elseif(line MATCHES "^extern UI_API [^;]*[ *](g_[A-Za-z0-9_]+);")
                list(APPEND required "${CMAKE_MATCH_1}")
            elseif(class AND line MATCHES "^[ \t]*static [^()=;]*[ *](s_[A-Za-z0-9_]+);")
                list(APPEND required "${class}::${CMAKE_MATCH_1}")
            endif()
        endforeach()
    endforeach()
endforeach()
if(NOT classes OR NOT required)
    message(FATAL_ERROR "no public classes or globals found under ${SOURCE_DIR}")
endif()

# The exported symbols, mangled.
get_filename_component(ext "${LIBRARY}" LAST_EXT)
if(ext STREQUAL ".dll")
    execute_process(COMMAND "${LISTER}" -p "${LIBRARY}" OUTPUT_VARIABLE listing RESULT_VARIABLE rc)
    string(FIND "${listing}" "[Ordinal/Name Pointer] Table" start)
    string(SUBSTRING "${listing}" ${start} -1 listing)
    string(REGEX MATCHALL "\t\\[ *[0-9]+\\] [^\n]+" symbols "${listing}")
    list(TRANSFORM symbols REPLACE "^\t\\[ *[0-9]+\\] " "")
else()
    execute_process(COMMAND "${LISTER}" -D --defined-only --format=posix "${LIBRARY}"
                    OUTPUT_VARIABLE listing RESULT_VARIABLE rc)
    string(REGEX MATCHALL "[^\n]+" rows "${listing}")
    set(symbols "")
    foreach(row IN LISTS rows)
        string(REGEX REPLACE " .*" "" symbol "${row}")
        list(APPEND symbols "${symbol}")
    endforeach()
endif()
if(NOT rc EQUAL 0 OR NOT symbols)
    message(FATAL_ERROR "cannot list the exports of ${LIBRARY}")
endif()

# Demangled, one per line.
string(REPLACE ";" "\n" mangled "${symbols}")
file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/exports-mangled.txt" "${mangled}\n")
execute_process(COMMAND "${DEMANGLER}" INPUT_FILE "${CMAKE_CURRENT_BINARY_DIR}/exports-mangled.txt"
                OUTPUT_VARIABLE demangled RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "${DEMANGLER} failed")
endif()
string(REGEX MATCHALL "[^\n]+" exports "${demangled}")

string(JOIN "|" owners ${classes} ${namespaces} std)
set(record "^(vtable|typeinfo|typeinfo name|VTT|construction vtable) for ")
set(stray "")
set(found "") # what each export belongs to: a class, or a member or global by its full name
foreach(symbol IN LISTS exports)
    string(REGEX REPLACE "${record}" "" name "${symbol}")
    string(REGEX REPLACE "\\(.*" "" name "${name}")
    if(name MATCHES "^(${owners})(::|<|$)" OR name IN_LIST required)
        list(APPEND found "${name}")
    elseif(NOT (ext STREQUAL ".dll" AND symbol MATCHES "^typeinfo (name )?for ")
           AND NOT symbol MATCHES "^__odr_asan[.]")
        list(APPEND stray "${symbol}")
    endif()
endforeach()

set(missing "")
foreach(name IN LISTS required)
    if(NOT name IN_LIST found)
        list(APPEND missing "${name}")
    endif()
endforeach()
foreach(class IN LISTS classes)
    set(members ${found})
    list(FILTER members INCLUDE REGEX "^${class}(::|$)")
    if(NOT members)
        list(APPEND missing "${class}")
    endif()
endforeach()

list(LENGTH exports count)
if(stray OR missing OR unmarked)
    string(REPLACE ";" "\n  " stray "${stray}")
    string(REPLACE ";" "\n  " missing "${missing}")
    string(REPLACE ";" "\n  " unmarked "${unmarked}")
    message(FATAL_ERROR "${LIBRARY}: ${count} exports\nexported but not public:\n  ${stray}\n"
                        "public but not exported:\n  ${missing}\npublic but not marked UI_API:\n  ${unmarked}")
endif()
message(STATUS "${LIBRARY}: ${count} exports, all public; every public class, static and global exported")
