# The pmset listing reader and the records it builds: shared by the core library and the
# fuzz build, which compiles them with coverage instrumentation.
set(LULLWICK_PARSER_SOURCES
    model/SleepKind.cpp
    model/AssertionKind.cpp
    model/Assertion.cpp
    model/AssertionsSnapshot.cpp
    model/RandomUuid.cpp
    model/TextRules.cpp
    pmset/PartialAssertion.cpp
    pmset/PMSetParser.cpp
)
list(TRANSFORM LULLWICK_PARSER_SOURCES PREPEND "${CMAKE_CURRENT_LIST_DIR}/")

# Each system's words, catalog and links: the core's, and the fuzz build's for the findings that
# speak in them.
set(LULLWICK_PROFILE_SOURCES
    profile/Profile.cpp
    profile/MacWords.cpp
    profile/LinuxWords.cpp
    profile/LinuxHolderWords.cpp
    profile/LinuxSuspendWords.cpp
    profile/LinuxSleepWords.cpp
    profile/DesktopLinks.cpp
    catalog/ProcessCatalog.cpp
    catalog/MacCatalog.cpp
    catalog/LinuxCatalog.cpp
)
if(NOT APPLE)
    list(APPEND LULLWICK_PROFILE_SOURCES platform/linux/DesktopEntry.cpp)
endif()
list(TRANSFORM LULLWICK_PROFILE_SOURCES PREPEND "${CMAKE_CURRENT_LIST_DIR}/")
