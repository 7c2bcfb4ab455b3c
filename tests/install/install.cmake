# SPDX-License-Identifier: MIT
# Installs the project into a temporary prefix and builds and runs consumers against it.
set(NLS_CONSUMER_FLAGS "")
if(NLS_M32)
  string(APPEND NLS_CONSUMER_FLAGS " -m32")
endif()
if(NLS_SANITIZE)
  string(APPEND NLS_CONSUMER_FLAGS " -fsanitize=address,undefined")
endif()
# The installed static library of a coverage build calls the gcov runtime.
if(NLS_COVERAGE)
  string(APPEND NLS_CONSUMER_FLAGS " --coverage")
endif()
string(STRIP "${NLS_CONSUMER_FLAGS}" NLS_CONSUMER_FLAGS)
add_test(NAME Install.CMakePackageAndPkgConfigServeCAndCxxConsumers
         COMMAND ${CMAKE_CURRENT_LIST_DIR}/install_test.sh ${CMAKE_BINARY_DIR}
                 ${CMAKE_CURRENT_LIST_DIR}/consumer ${CMAKE_C_COMPILER} ${CMAKE_CXX_COMPILER}
                 "${NLS_CONSUMER_FLAGS}")
