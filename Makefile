# Every task of the project is one make command. Each first installs the Debian packages that
# are missing (on a ready machine it asks nothing of the network), then configures, builds and
# runs in its own build folder:
#
#   make demo                 the quanda program's tour of the library       build/
#   make test                 the whole test suite                           build/
#   make bench                the benchmarks, Release build, and the ratios  build-release/
#   make sanitize             the tests under ASan and UBSan (clang)         build-sanitize/
#   make fuzz                 each libFuzzer target for FUZZ_SECONDS (clang) build-fuzz/
#   make install PREFIX=dir   the library, headers, CMake package, program   build/
#   make consumer             installs to a temporary prefix and builds examples/consumer
#                             against it, out of the tree, as an app would
#   make format               clang-format over every source
#
# Knobs: JOBS (parallel jobs, 2), ARGS (arguments for `make demo`), BENCH_ARGS, FUZZ_SECONDS,
# PREFIX, QUANDA_WERROR (ON turns warnings into errors; on by default when CI=true).

SHELL := /bin/bash
.SHELLFLAGS := -euo pipefail -c
.DEFAULT_GOAL := help

JOBS ?= 2
PREFIX ?= /usr/local
ARGS ?=
BENCH_ARGS ?=
FUZZ_SECONDS ?= 5
ON_CI := $(filter true 1 yes,$(CI))
QUANDA_WERROR ?= $(if $(ON_CI),ON,OFF)
# CI compiles the benchmarks in the test build too, so that they never rot unseen.
TEST_BUILD_BENCH ?= $(if $(ON_CI),ON,OFF)

PACKAGES := cmake ninja-build g++ clang libclang-rt-14-dev libicu-dev nlohmann-json3-dev \
  libgtest-dev libgmock-dev libbenchmark-dev libhowardhinnant-date-dev libabsl-dev \
  libcli11-dev libical-dev pkg-config tzdata tmux
FORMAT_PACKAGES := clang-format

BUILD := build
CONFIGURE = cmake -S . -G Ninja -DQUANDA_WERROR=$(QUANDA_WERROR) -B
TEST_FLAGS = -DQUANDA_BUILD_BENCH=$(TEST_BUILD_BENCH)
CTEST = ctest --output-on-failure --no-tests=error -j$(JOBS) --test-dir

# Installs whichever of the packages given is not installed yet; apt-get only runs when one is
# missing, and sudo only when not root.
define install-missing
	missing=""; \
	for package in $(1); do \
	  dpkg-query -W -f='$${db:Status-Status}\n' "$$package" 2>/dev/null | grep -qx installed \
	    || missing="$$missing $$package"; \
	done; \
	if [ -n "$$missing" ]; then \
	  echo "Installing missing Debian packages:$$missing"; \
	  sudo=""; [ "$$(id -u)" -eq 0 ] || sudo=sudo; \
	  $$sudo apt-get update; \
	  $$sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y $$missing; \
	fi
endef

.PHONY: help deps demo test bench sanitize fuzz install consumer format format-check clean

help:
	@sed -n '1,16s/^# \{0,1\}//p' $(firstword $(MAKEFILE_LIST))

deps:
	@$(call install-missing,$(PACKAGES))

demo: deps
	$(CONFIGURE) $(BUILD) $(TEST_FLAGS)
	cmake --build $(BUILD) -j$(JOBS) --target quanda-program
	./$(BUILD)/quanda $(ARGS)

test: deps
	$(CONFIGURE) $(BUILD) $(TEST_FLAGS)
	cmake --build $(BUILD) -j$(JOBS)
	$(CTEST) $(BUILD)

bench: deps
	$(CONFIGURE) build-release -DCMAKE_BUILD_TYPE=Release -DQUANDA_BUILD_TESTS=OFF \
	  -DQUANDA_BUILD_TOOLS=OFF -DQUANDA_BUILD_BENCH=ON
	cmake --build build-release -j$(JOBS) --target quanda_bench
	./build-release/quanda_bench $(BENCH_ARGS)

# clang here, so that CI also sees clang's warnings on the library, the program and the tests.
# CXX is read only when a folder is first configured, which is when its compiler is chosen.
sanitize: deps
	CXX=clang++ $(CONFIGURE) build-sanitize -DQUANDA_SANITIZE=ON -DQUANDA_BUILD_BENCH=OFF
	cmake --build build-sanitize -j$(JOBS)
	UBSAN_OPTIONS=print_stacktrace=1 $(CTEST) build-sanitize

fuzz: deps
	CXX=clang++ $(CONFIGURE) build-fuzz -DQUANDA_BUILD_FUZZ=ON -DQUANDA_BUILD_TESTS=OFF \
	  -DQUANDA_BUILD_TOOLS=OFF -DQUANDA_BUILD_BENCH=OFF
	cmake --build build-fuzz -j$(JOBS)
	@targets=$$(cat build-fuzz/fuzz-targets.txt); \
	if [ -z "$$targets" ]; then echo "No fuzz targets: fuzz/ has no sources."; exit 0; fi; \
	for target in $$targets; do \
	  corpus=build-fuzz/corpus/$$target; mkdir -p "$$corpus"; \
	  seeds=""; [ ! -d "fuzz/corpus/$$target" ] || seeds="fuzz/corpus/$$target"; \
	  echo "== $$target for $(FUZZ_SECONDS) s"; \
	  ./build-fuzz/$$target -max_total_time=$(FUZZ_SECONDS) -print_final_stats=1 \
	    "$$corpus" $$seeds; \
	done

install: deps
	$(CONFIGURE) $(BUILD) $(TEST_FLAGS)
	cmake --build $(BUILD) -j$(JOBS) --target keel quanda quanda-program
	cmake --install $(BUILD) --prefix "$(PREFIX)"

# The consumer is copied out of the repository first, so that only the installed package can
# satisfy it.
consumer: deps
	$(CONFIGURE) $(BUILD) $(TEST_FLAGS)
	cmake --build $(BUILD) -j$(JOBS) --target keel quanda quanda-program
	@work=$$(mktemp -d); trap 'rm -rf "$$work"' EXIT; \
	set -x; \
	cmake --install $(BUILD) --prefix "$$work/prefix" >/dev/null; \
	cp -r examples/consumer "$$work/consumer"; \
	cmake -S "$$work/consumer" -B "$$work/build" -G Ninja -DCMAKE_PREFIX_PATH="$$work/prefix" \
	  -DCMAKE_COMPILE_WARNING_AS_ERROR=$(QUANDA_WERROR) >/dev/null; \
	cmake --build "$$work/build"; \
	"$$work/build/quanda_consumer"

format:
	@$(call install-missing,$(FORMAT_PACKAGES))
	git ls-files -- '*.h' '*.cpp' | xargs -r clang-format -i

format-check:
	@$(call install-missing,$(FORMAT_PACKAGES))
	git ls-files -- '*.h' '*.cpp' | xargs -r clang-format --dry-run -Werror

clean:
	rm -rf $(BUILD) build-release build-sanitize build-fuzz
