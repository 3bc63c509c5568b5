# Everything a new user needs is `make run` and `make test`; both install missing Debian
# packages first (scripts/install-deps).
BUILD_DIR ?= build
ASAN_DIR ?= build-asan
JOBS ?= $(shell nproc)

.PHONY: all deps build run test test-release test-asan bench clean

all: build

deps:
	@scripts/install-deps

build: deps
	@scripts/build $(BUILD_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo

run: build
	@scripts/run-app $(BUILD_DIR)

# The whole suite, then the whole suite again under AddressSanitizer and UBSan.
test: deps
	@$(MAKE) --no-print-directory test-release test-asan

test-release:
	@scripts/build $(BUILD_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	@scripts/run-tests $(BUILD_DIR)

test-asan:
	@scripts/build $(ASAN_DIR) -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-g -O1" -DVOREL_SANITIZE=ON
	@scripts/run-tests $(ASAN_DIR)

bench: build
	@scripts/run-benchmarks $(BUILD_DIR)

clean:
	rm -rf $(BUILD_DIR) $(ASAN_DIR)
