# ORVA: set-up, build and tests. `make demo` and `make test` install what is missing by themselves.
PACKAGES = g++ cmake ninja-build libcli11-dev nlohmann-json3-dev libgtest-dev qt6-base-dev qt6-svg-dev qt6-translations-l10n libhwy-dev pkg-config fonts-dejavu-core qpdf
CHECK_PACKAGES = clang-format clang-tidy python3
FUZZ_PACKAGES = clang-14 libclang-rt-14-dev
FUZZ_SECONDS = 60
DEB_PACKAGES = dpkg-dev file lintian desktop-file-utils appstream
DEB_CHECK_PACKAGES = debootstrap
SUDO = $(if $(filter 0,$(shell id -u)),,sudo)
CLI = build/release/orva-cli
REFERENCE = ../shared/reference
SOURCES = $(shell git ls-files '*.cpp' '*.h')

.PHONY: all demo run test test-sanitize check-reference check-scale package check-package check-window test-threads bench bench-long campaign fuzz format check-format check-static check-changed pictures readme-pictures speaker-data clean

all: build/release/build.ninja
	cmake --build --preset release

# $(call install,PACKAGES): installs those that are missing.
define install
	@missing=""; for package in $(1); do \
	    dpkg-query -W -f='$${Status}' $$package 2>/dev/null | grep -q 'ok installed' || missing="$$missing $$package"; \
	done; \
	if [ -n "$$missing" ]; then \
	    echo "Installing$$missing"; \
	    $(SUDO) apt-get update -qq && \
	    $(SUDO) env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $$missing; \
	fi
endef

.PHONY: packages check-packages
packages:
	$(call install,$(PACKAGES))

check-packages: packages
	$(call install,$(CHECK_PACKAGES))

build/%/build.ninja: packages CMakeLists.txt CMakePresets.json
	cmake --preset $* $(CMAKE_ARGS)

demo: all
	mkdir -p demo
	$(CLI) show examples/theatre.lad > demo/theatre-project.json
	$(CLI) geometry examples/theatre.lad > demo/theatre-geometry.json
	$(CLI) map examples/theatre.lad --map-type continuous --a-weighted --cell 0.05 --png demo/map.png > demo/map.json
	$(CLI) levels examples/theatre.lad --averaging broadband --map-type continuous --a-weighted --png demo/curve.png > demo/curve.json
	$(CLI) rigging examples/theatre.lad --png demo/rigging.png > demo/theatre-rigging.txt
	$(CLI) rigging examples/theatre.lad --language de > demo/theatre-rigging-de.txt
	$(CLI) levels examples/theatre.lad --averaging broadband --map-type continuous --a-weighted > demo/theatre-levels.json
	$(CLI) levels examples/club.lad --averaging broadband --map-type continuous --a-weighted > demo/club-levels.json
	$(CLI) map examples/theatre.lad --map-type continuous --a-weighted --csv demo/theatre-map.csv > demo/theatre-map.json
	$(CLI) levels examples/theatre.lad --points 5 --averaging broadband --map-type continuous --a-weighted
	$(CLI) optimize examples/theatre.lad --area 2 --averaging broadband --out demo/theatre-optimized.lad > demo/theatre-optimize.json
	for sample in theatre club; do \
	    $(CLI) report examples/$$sample.lad demo/$$sample.rtf && \
	    $(CLI) report examples/$$sample.lad demo/$$sample-de.rtf --language de && \
	    $(CLI) report examples/$$sample.lad demo/$$sample.pdf --averaging broadband --map-type continuous --a-weighted || exit 1; \
	done
	cp -r build/release/ORVA-help.pdf build/release/ORVA-help-de.pdf build/release/ORVA-help demo/
	cat demo/theatre-map.json demo/theatre-rigging.txt
	@echo "Everything that was calculated is in demo/."

# Opens the window.
run: all
	build/release/orva

test: all
	ctest --preset release -j $$(nproc)

test-sanitize: build/sanitize/build.ninja
	cmake --build --preset sanitize
	ctest --preset sanitize -j $$(nproc)

# What runs on several threads, under ThreadSanitizer.
test-threads: build/threads/build.ninja
	cmake --build --preset threads --target orva_engine_tests orva_optimize_tests
	build/threads/tests/orva_engine_tests --gtest_filter='Parallel*:*Map*:*Thread*'
	build/threads/tests/orva_optimize_tests

# Hours: what it takes to prove the best arrangement; searches of 200 rooms against the rules.
bench-long: all
	build/release/tests/orva_optimize_tests --gtest_also_run_disabled_tests --gtest_filter='*TwoHundredRooms'
	build/release/bench/orva_prove_bench

# Fast against literal kernel: a table, and build/bench.json.
bench: all
	build/release/bench/orva_bench build/bench.json
	build/release/bench/orva_search_bench build/bench_search.json
	build/release/bench/orva_edit_bench
	build/release/bench/orva_live_bench build/bench_live.json

# Fuzzes the readers and the program, FUZZ_SECONDS each. What is found stays in build/fuzz/. Fonts stay with the toolkit.
fuzz: packages
	$(call install,$(FUZZ_PACKAGES))
	cmake --preset fuzz
	cmake --build --preset fuzz
	for reader in project speaker_data search_part state settings typed_number program; do \
	    mkdir -p build/fuzz/corpus/$$reader && \
	    leaks=1; [ $$reader = program ] && leaks=0; \
	    ASAN_OPTIONS=detect_leaks=$$leaks build/fuzz/tests/fuzz/fuzz_$$reader -max_total_time=$(FUZZ_SECONDS) -max_len=65536 \
	        -print_final_stats=1 -artifact_prefix=build/fuzz/ \
	        build/fuzz/corpus/$$reader tests/fuzz/corpus/$$reader || exit 1; \
	done

# Tries to break the program, part by part; the figures come into docs/reliability.md. Hours; goes on where it was stopped.
PARTS =
campaign: all build/sanitize/build.ninja
	$(call install,$(FUZZ_PACKAGES) llvm-14 locales python3 valgrind)
	cmake --build --preset sanitize --target orva
	if [ -d $(UIDRIVER) ]; then UIDRIVER_BUILD=/tmp/uidriver-build $(UIDRIVER)/build.sh; fi
	UIDRIVER=$(abspath $(UIDRIVER)) campaign/campaign.py $(PARTS)

# The reference cases of the commands that are there, where the folder is.
COMMANDS = new,show,geometry,rigging,levels,map,optimize,aim,subarray,report
check-reference: all
	@if [ -d $(REFERENCE) ]; then $(REFERENCE)/check.py --cli $(CLI) --commands $(COMMANDS) && \
	    $(REFERENCE)/check.py --cli $(CLI) --cases $(REFERENCE)/beyond/cases --data $(REFERENCE)/beyond/data --commands levels,spectrum,optimize,compare; \
	else echo "$(REFERENCE) is not here: nothing to check"; fi

# A search in parts, as job arrays run it, against the same search in one.
check-scale: all
	$(call install,parallel)
	scale/check.sh $(CLI)

# The Debian package, build/release/orva_VERSION_ARCH.deb.
package: all
	$(call install,$(DEB_PACKAGES))
	rm -f build/release/orva_*.deb
	cd build/release && cpack
	lintian --allow-root --fail-on error,warning build/release/orva_*.deb

# Installs it into a bare system, uses it there and removes it again. The first time takes longer.
check-package: package
	$(call install,$(DEB_CHECK_PACKAGES))
	desktop-file-validate packaging/orva.desktop
	appstreamcli validate --no-net --strict build/release/packaging/*.metainfo.xml
	$(SUDO) packaging/check.sh build/release/orva_*.deb build/package

# Drives the real window from outside, where the driver is.
UIDRIVER = ../shared/uidriver
check-window: all
	$(call install,poppler-utils)
	$(call install,xvfb openbox dbus at-spi2-core python3-pyatspi)
	@if [ -d $(UIDRIVER) ]; then \
	    UIDRIVER_BUILD=/tmp/uidriver-build $(UIDRIVER)/build.sh && \
	    for check in tests/driven/check_*.py; do \
	        echo "$$check" && UIDRIVER_BUILD=/tmp/uidriver-build UIDRIVER=$(abspath $(UIDRIVER)) python3 $$check || exit 1; \
	    done; \
	else echo "$(UIDRIVER) is not here: nothing to check"; fi

# Pictures of all pages and dialogs, a sheet for each look: appearances, languages, sizes, fonts, pixel ratios.
pictures: all
	for ratio in 1 2; do \
	    ORVA_PICTURES=$(abspath build/pictures) QT_SCALE_FACTOR=$$ratio QT_QPA_PLATFORM=offscreen \
	        build/release/tests/orva_window_tests --gtest_filter='Pictures.*' || exit 1; \
	done
	@echo "The sheets are in build/pictures/."

# Pictures of the README, of today's program.
readme-pictures: all
	cp build/release/ORVA-help/en-live.png docs/pictures/live.png
	cp build/release/ORVA-help/en-compare.png docs/pictures/compare.png
	build/release/orva-cli report examples/theatre.lad build/readme.pdf --map-type continuous --a-weighted
	pdftoppm -png -r 65 -f 3 -l 3 -singlefile build/readme.pdf docs/pictures/report

format: check-packages
	clang-format -i $(SOURCES)

check-format: check-packages
	clang-format --dry-run -Werror $(SOURCES)

check-static: check-packages build/debug/build.ninja
	git ls-files '*.cpp' | tests/tidy.sh

# The same for what the last hours changed; check-static runs weekly.
check-changed: check-packages build/debug/build.ninja
	tests/changed_sources.sh | tests/tidy.sh

# Makes the shipped loudspeaker data again.
speaker-data: all
	build/release/data/make_speaker_data data

clean:
	rm -rf build demo
