# orva_own_code(TARGET): warnings and floating-point rules of everything we write ourselves.
# Contraction stays off so that the same input gives the same bits on every target.
# -Wdangling-pointer sees something only in optimized builds, which `make test` makes.
# GCC 12's -Wrestrict misfires on joining std::string (its bug 105651).
# Release builds check what the standard library is asked for, but where the search turns round and
# round (that costs it 3 to 14 per cent).
function(orva_own_code target)
    if(NOT target MATCHES "^orva_(engine|optimize)$")
        target_compile_definitions(${target} PRIVATE $<$<CONFIG:Release>:_GLIBCXX_ASSERTIONS>)
    endif()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wdangling-pointer=2>
                           -ffp-contract=off $<$<BOOL:${ORVA_WERROR}>:-Werror>)
endfunction()

# orva_library(NAME [DEPENDS names...] [LINK targets...] SOURCES files...)
# Makes the static library orva_NAME from the folder it is called in. The target's only include
# folder lies in the build tree and holds one link, NAME, to the source folder; a file can thus
# include its own folder's headers and those of DEPENDS (whose include folders are passed on), and
# nothing else.
function(orva_library name)
    cmake_parse_arguments(ARG "" "" "DEPENDS;LINK;SOURCES" ${ARGN})
    set(target orva_${name})
    set(include_dir ${CMAKE_BINARY_DIR}/include/${target})
    file(MAKE_DIRECTORY ${include_dir})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_dir}/${name} SYMBOLIC)

    add_library(${target} STATIC ${ARG_SOURCES})
    target_include_directories(${target} PUBLIC ${include_dir})
    list(TRANSFORM ARG_DEPENDS PREPEND orva_)
    target_link_libraries(${target} PUBLIC ${ARG_DEPENDS} ${ARG_LINK})
    orva_own_code(${target})
endfunction()
