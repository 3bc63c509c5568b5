# cmake -DFOLDER=... -DVERSION=... -P installGltfValidator.cmake
# Installs the Khronos glTF validator from npm into FOLDER (in the build tree), unless that
# version is there already.
set(package "${FOLDER}/node_modules/gltf-validator/package.json")
if(EXISTS "${package}")
  file(READ "${package}" manifest)
  string(JSON installed ERROR_VARIABLE missing GET "${manifest}" version)
  if(installed STREQUAL VERSION)
    return()
  endif()
endif()
find_program(NPM npm REQUIRED)
file(MAKE_DIRECTORY "${FOLDER}")
execute_process(
  COMMAND "${NPM}" install --prefix "${FOLDER}" --no-audit --no-fund --no-save --loglevel=error
          "gltf-validator@${VERSION}"
  RESULT_VARIABLE result)
if(NOT result EQUAL 0 OR NOT EXISTS "${package}")
  message(FATAL_ERROR "Could not install gltf-validator ${VERSION} from npm into ${FOLDER}")
endif()
