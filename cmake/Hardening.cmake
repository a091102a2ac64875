# Protection of the built programs against attacks on memory. Not with sanitizers, which check more
# and do not go together with it.

if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    if(WIN32)
        add_link_options(-Wl,--dynamicbase,--nxcompat,--high-entropy-va)
    else()
        add_compile_options(-fstack-protector-strong
            $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
        add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
    endif()
endif()
