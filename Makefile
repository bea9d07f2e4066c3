# The commands of daily work. `make run` and `make test` are all a fresh machine needs: they install what is missing
# from Debian, configure, build and go.

.DEFAULT_GOAL := help
.PHONY: help build run test bench endurance demo screenshots format tidy install deb clean

PREFIX ?= /usr/local

sources = $(shell find src server tests -name '*.h' -o -name '*.cpp')

help: ## This list
	@sed -n 's/^\([a-z]*\):.*## /  make \1\t/p' Makefile | expand -t 20

build: ## Build the application, the embedded backend and the tests (build/)
	@scripts/packages install build view test
	@scripts/build release

run: ## Start the embedded backend and the application; without a display, the demonstration
	@scripts/packages install build view test run
	@scripts/build release
	@scripts/run

test: ## Every test, and the unit tests once more under the address and undefined-behaviour sanitizers
	@scripts/packages install build view test run
	@scripts/build release
	@ctest --test-dir build --output-on-failure --no-tests=error -j2
	@scripts/build asan unit_tests
	@ctest --test-dir build/asan --output-on-failure --no-tests=error -j2 -L unit

bench: ## Measure the program on a virtual desktop: docs/performance.md
	@scripts/packages install build view test run
	@scripts/bench

endurance: ## Dictate for two hours and watch what the programs hold on to: docs/performance.md
	@scripts/packages install build view test run
	@scripts/build release
	@scripts/endurance

demo: export SAY ?=
demo: ## Speak a sentence into an editor on a virtual desktop: make demo SAY="open the door"
	@scripts/packages install build view test run
	@scripts/build release
	@scripts/demo

screenshots: ## Draw every view, dark and light: build/screenshots/
	@scripts/packages install build view test
	@scripts/build release velmora-gallery
	@scripts/screenshots

format: ## Lay out the sources as .clang-format says
	@scripts/packages install tidy
	@clang-format -i $(sources)

tidy: ## Check the sources with clang-tidy
	@scripts/packages install build view test tidy
	@scripts/build release
	@scripts/tidy

install: build ## Install under PREFIX (/usr/local)
	@cmake --install build --prefix "$(PREFIX)" > build/install.log
	@echo "Installed under $(DESTDIR)$(PREFIX); build/install.log lists the files."

deb: ## Make a Debian package in build/
	@scripts/packages install build view test deb
	@scripts/build release
	@cd build && cpack -G DEB

clean: ## Remove build/
	@rm -rf build
