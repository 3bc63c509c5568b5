# Everything a new user needs is `make run` and `make test`; both install missing Debian
# packages first (scripts/install-deps).
BUILD_DIR ?= build
ASAN_DIR ?= build-asan
FUZZ_DIR ?= build-fuzz
FUZZ_SECONDS ?= 60
JOBS ?= $(shell nproc)

.PHONY: all deps build run test test-release test-asan bench soak fuzz interop clean

all: build

deps:
	@scripts/install-deps

build: deps
	@scripts/build $(BUILD_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo

run: build
	@scripts/run-app $(BUILD_DIR)

# The whole suite, then the whole suite again under AddressSanitizer and UBSan; then the tests
# that skipped themselves, with their reasons.
test: deps
	@$(MAKE) --no-print-directory test-release test-asan
	@scripts/report-skips $(BUILD_DIR) $(ASAN_DIR)

test-release:
	@scripts/build $(BUILD_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	@scripts/run-tests $(BUILD_DIR)

test-asan:
	@scripts/build $(ASAN_DIR) -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-g -O1" -DVOREL_SANITIZE=ON
	@scripts/run-tests $(ASAN_DIR)

bench: build
	@scripts/run-benchmarks $(BUILD_DIR)

# The random edit sequences and the window's monkey, long (tests/ui/randomRuns.h); set
# VOREL_RANDOM_SEED to start elsewhere.
soak: build
	@QT_QPA_PLATFORM=offscreen VOREL_RANDOM_SEQUENCES=$${VOREL_RANDOM_SEQUENCES:-1000} \
	  VOREL_RANDOM_STEPS=$${VOREL_RANDOM_STEPS:-50} VOREL_MONKEY_EVENTS=$${VOREL_MONKEY_EVENTS:-20000} \
	  $(BUILD_DIR)/bin/test-ui-random

# The table's clipboard text through LibreOffice Calc and back (installs Calc; scripts/interop).
interop: build
	@scripts/interop $(BUILD_DIR)

# Builds the fuzz targets with clang and runs each for FUZZ_SECONDS with its corpus (fuzz/).
fuzz: deps
	@scripts/fuzz $(FUZZ_DIR) $(FUZZ_SECONDS)

clean:
	rm -rf $(BUILD_DIR) $(ASAN_DIR) $(FUZZ_DIR)
