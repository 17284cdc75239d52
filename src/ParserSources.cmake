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
    # An assertion kind's description is the platform profile's wording.
    platform/Profile.cpp
    platform/MacProfile.cpp
    platform/LinuxProfile.cpp
    catalog/MacCatalog.cpp
    catalog/LinuxCatalog.cpp
)
if(NOT APPLE)
    list(APPEND LULLWICK_PARSER_SOURCES platform/linux/DesktopEntry.cpp)
endif()
list(TRANSFORM LULLWICK_PARSER_SOURCES PREPEND "${CMAKE_CURRENT_LIST_DIR}/")
