# The front door. Every target installs what it needs, builds and runs; see README.md.
.DEFAULT_GOAL := help
.PHONY: help run build test test-windows test-sanitizers test-package test-pages test-reliability test-bindings \
	reliability compare-readers bench scale bench-python fuzz install package python csharp pascal clean

PREFIX ?= /usr/local
FUZZ_SECONDS ?= 600
COUNT ?= 1000000
EVENTS ?= 10000000
SEED ?= 1
WERROR := $(if $(CI),-DORV_WERROR=ON,)
export CTEST_OUTPUT_ON_FAILURE := 1
# A test that hangs is a test that fails, and says so.
ctest := ctest --no-tests=error --timeout 1500

define build
	@scripts/install-packages $(2)
	@cmake --preset $(1) $(WERROR) >build-$(1).log 2>&1 || { cat build-$(1).log; exit 1; }
	@rm -f build-$(1).log
	@cmake --build build/$(1) $(3)
endef

help:
	@sed -n 's/^##//p' $(MAKEFILE_LIST)

## run              build, and take examples/site.actions through the library
run: build
	@scripts/run build/native/bin/orvact

build:
	$(call build,native,base)

## test             build, and run the native tests
test: build
	@scripts/install-packages server || echo "The tests of events on a server are SKIPPED"
	@$(ctest) --test-dir build/native

## test-windows     cross-build for Windows, and run the tests under Wine
test-windows:
	$(call build,windows,base windows)
	@scripts/with-wine $(ctest) --test-dir build/windows

## test-sanitizers  run the native tests under the address, undefined behaviour and leak sanitizers
test-sanitizers:
	$(call build,sanitizers,base)
	@scripts/with-sanitizers $(ctest) --test-dir build/sanitizers

## test-package     make the packages, and try them as a user does
test-package: package
	@ORV_WINDOWS_BUILD=$(CURDIR)/build/windows \
		scripts/with-wine $(ctest) --test-dir build/native -C package -L package

## test-bindings    the conformance table in C, C++, Python, C# and Pascal, and the pages of the last three
test-bindings:
	$(call build,native,base bindings)
	@$(ctest) --test-dir build/native -C bindings -R '^(bindings|conformance)_'

## reliability      everything that the library promises under fire, and a sheet of it, build/reliability.md; QUICK=1
##                  takes twenty to forty minutes on two processors, DATE= is what the sheet shows
reliability:
	@scripts/install-packages base
	@scripts/reliability $(if $(QUICK),--quick) $(if $(DATE),--date "$(DATE)")

## test-reliability the part of it that belongs into the gate
test-reliability:
	@scripts/install-packages base
	@scripts/reliability --gate $(if $(DATE),--date "$(DATE)")

## test-pages       the pages of the catalogue and of event reports in a headless browser
test-pages: build
	@scripts/test-pages build/native

## compare-readers  compare the reading of text with the patterns that define it, on COUNT texts (1000000) from SEED (1)
compare-readers: build
	@cmake --build build/native --target orv_compare_readers
	@build/native/bin/orv_compare_readers $(COUNT) $(SEED)

## bench            build and run the benchmarks
bench:
	$(call build,bench,base bench)
	@scripts/bench build/bench

## scale            fill both homes of events with EVENTS (10000000; QUICK=1 takes 100000) and ask them; needs 20 GB
scale: build
	@scripts/install-packages scale
	@python3 -B tests/orvact/scale.py build/native/bin/orvact $(if $(QUICK),100000,$(EVENTS))

## bench-python     what the Python package costs
bench-python: build
	@ORVACTIONS_LIBRARY=build/native/bin/libOrvActions.so PYTHONPATH=build/native/python \
		python3 -B bench/python_bench.py build/native/bin/orvact

## fuzz             run each fuzz target for FUZZ_SECONDS (600); FAST=1 takes no sanitizers and is several times as fast
fuzz: preset = fuzz$(if $(FAST),-fast)
fuzz:
	$(call build,$(preset),base fuzz)
	@scripts/fuzz build/$(preset) $(FUZZ_SECONDS)

## install          install library, headers and tool under PREFIX (/usr/local)
install: build
	@cmake --install build/native --prefix $(PREFIX)
	@scripts/after-install $(PREFIX)

## package          the packages for both systems: build/native/packages, build/windows/packages
package:
	$(call build,native,base package)
	@umask 022 && cpack --config build/native/CPackConfig.cmake
	$(call build,windows,base windows package)
	@umask 022 && cpack --config build/windows/CPackConfig.cmake

## python           the wheels of the Python package for both systems, into build/package
## csharp           the sources of the C# assembly, a project and both libraries, into build/package/csharp
## pascal           the Pascal unit and both libraries, into build/package/pascal
python csharp pascal:
	$(call build,native,base,--target OrvActions orv_python)
	$(call build,windows,base windows,--target OrvActions orv_python)
	@scripts/bindings $@ build/native build/windows

## clean            remove everything that was built
clean:
	@rm -rf build
