# Two commands do everything on a fresh Debian machine: `make demo` and `make test`.
# `make help` lists the rest.

SHELL := /bin/bash
.DEFAULT_GOAL := help
.PHONY: help deps demo test bench doc instructions fuzz images mutants lint format deb clean

PACKAGES := g++ python3 cmake ninja-build ccache pkg-config libsqlite3-dev libcli11-dev nlohmann-json3-dev \
            libgtest-dev libmodbus-dev libevdev-dev libftdi1-dev libhdf5-dev python3-h5py \
            qt6-base-dev qt6-charts-dev libqt6opengl6-dev \
            pybind11-dev python3-dev python3-numpy python3-matplotlib python3-pytest mypy \
            python3-clang-19
PACKAGES_BENCH := libbenchmark-dev valgrind
PACKAGES_DOC := doxygen graphviz
PACKAGES_DEB := $(PACKAGES_DOC) debhelper dh-python dpkg-dev lintian
PACKAGES_LINT := clang-19 clang-tidy-19 clang-format-19

DEMO_DIR ?= demo-out
# Seconds of the live view; empty runs until Ctrl-C.
DEMO_SECONDS ?= 10
FUZZ_SECONDS ?= 30
JOBS ?= $(shell nproc)

help:  ## this list
	@grep -hE '^[a-z]+:.*## ' $(MAKEFILE_LIST) | sed -E 's/^([a-z]+):.*## /  make \1\t/' | expand -t 16

deps:  ## install the Debian packages that are missing
	@tools/deps.sh $(PACKAGES)

demo: deps  ## build the program and show the demo frame on the simulated machine
	@tools/construit.sh release $(JOBS) zuma_program zuma_python
	@tools/demo.sh build/release/zuma "$(DEMO_DIR)" "$(DEMO_SECONDS)"

test: deps  ## build and run every test under the sanitizers
	@tools/construit.sh debug $(JOBS) zuma_tests zuma_qt_tests zuma_python
	@ctest --preset debug -j $(JOBS)

bench: deps  ## time the pass, count its allocations and instructions
	@tools/deps.sh $(PACKAGES_BENCH)
	@tools/construit.sh bench $(JOBS) zuma_bench
	@tools/bench.sh build/bench/zuma_bench

instructions: deps  ## count the instructions of a sensor; 5 % more than bench/instructions.txt fail
	@tools/deps.sh $(PACKAGES_BENCH)
	@tools/instructions.sh $(JOBS)

fuzz: deps  ## give each decoder random bytes for FUZZ_SECONDS
	@tools/deps.sh clang-19 libclang-rt-19-dev
	@tools/fuzz.sh $(FUZZ_SECONDS) $(JOBS)

doc: deps  ## make the reference of the headers, build/doc/html; a name without its words fails
	@tools/deps.sh $(PACKAGES_DOC)
	@tools/documentation.sh build/doc

images: deps  ## make the pictures in docs/images anew
	@tools/construit.sh release $(JOBS) zuma_images zuma_python
	@build/release/zuma_images docs/images
	@PYTHONPATH=build/release/python /usr/bin/python3 examples/python/tensile.py --picture docs/images/tensile.png

mutants: deps  ## change stop chain, commands and limits in small ways; a test must notice each
	@tools/deps.sh python3-clang-19
	@/usr/bin/python3 tools/mutants/mutants.py --jobs $(JOBS)

lint: deps  ## clang-tidy over the sources and clang-format in check mode
	@tools/deps.sh $(PACKAGES_LINT)
	@tools/lint.sh $(JOBS)

format: deps  ## rewrite the sources in the project's format
	@tools/deps.sh clang-format-19
	@git ls-files '*.cpp' '*.h' | xargs clang-format-19 -i

deb: deps  ## build the Debian packages, and have lintian look at them
	@tools/deps.sh $(PACKAGES_DEB)
	@tools/paquet_debian.sh build/deb $(JOBS)

clean:  ## remove what was built
	@rm -rf build demo-out
