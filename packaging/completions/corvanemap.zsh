#compdef corvanemap
# zsh completion for corvanemap. The keys come from the program itself, which lists them in a few
# milliseconds, so that they are always those of the program at hand.

_corvanemap_targets() { _corvanemap_keys write }
_corvanemap_sources() { _corvanemap_keys read }

_corvanemap_keys() {
  local wanted=$1 line key ability label
  local -a keys
  # Key, ability and label stand in columns, two blanks apart.
  for line in ${(f)"$(LC_ALL=C _call_program keys $words[1] --formats 2>/dev/null)"}; do
    key=${line%% *}
    ability=${${line#$key}##[[:space:]]#}
    label=${ability##*  }
    [[ $ability == ($wanted|read and write)\ * ]] && keys+=("${key//:/\\:}:$label")
  done
  _describe -t keys format keys
}

# The presets of CSV layouts, which the program names to whoever gives none that it knows.
_corvanemap_presets() {
  local line=$(LC_ALL=C $words[1] --csv-read "?" 2>&1)
  local -a presets=(${(s:, :)${${(f)line}[1]##* one of: }})
  compadd -a presets
}

_corvanemap_layouts_to_read() {
  compadd auto
  _corvanemap_presets
}

# The settings that can be changed.
_corvanemap_settings() {
  local -a lines=(${(f)"$(LC_ALL=C $words[1] --settings 2>/dev/null)"})
  lines=(${lines:#[^ ]##[ ]##bytes*})
  compadd -S = -- ${lines%% *}
}

_corvanemap_providers() {
  local -a lines=(${(M)${(f)"$(LC_ALL=C $words[1] --providers 2>/dev/null)"}:#?????[^ ]*})
  lines=(${lines#?????})
  compadd -- ${lines%% *}
}

# Behind the first source: the key, or one more source; behind a key the language.
_corvanemap_further() {
  local -a keys=(${(f)"$(LC_ALL=C $words[1] --formats 2>/dev/null)"})
  local key
  for key in ${keys%% *}; do
    if (( ${words[(Ie)$key]} > 2 && ${words[(Ie)$key]} < CURRENT )); then
      compadd LANG_ENGLISH LANG_FRENCH LANG_GERMAN LANG_DUTCH
      return
    fi
  done
  _alternative 'keys:format:_corvanemap_targets' 'sources:source:_files'
}

_corvanemap() {
  emulate -L zsh -o extended_glob
  _arguments -s \
    '(-o --output)'{-o,--output}'[write to this file or folder]:target:_files' \
    '--merge[put all sources into one itinerary]' \
    '--recursive[convert the folders below a folder too]' \
    '--from[read the source as this format]:format:_corvanemap_sources' \
    '--list[which lists become the itinerary]:lists:(all routes tracks waypoints pois)' \
    "--split[the writer's option, for itn the most points in one file]:number:" \
    '--option[the option of a format as a word]:word:(no-commas via-points explorist hand-off)' \
    '*--reverse[turn the itinerary round]' \
    '*--sort[sort the stops by their names]' \
    '*--unique[keep one of the stops at the same place]' \
    '*--simplify[leave out points beside the line of the others]:metres:' \
    '*--optimize=-[order the stops so that the way becomes shorter]::search:(best)' \
    '--way[print the way along the stops of a file]:source:_files' \
    '--directions=-[ask for the way to each stop before writing]::provider:' \
    '(--with-way)--as-track[with --directions: write the way itself as a track]' \
    '(--as-track)--with-way[with --directions: write the stops with the way between them]' \
    '--mode[the vehicle]:mode:(car truck pedestrian bicycle motorcycle van bus)' \
    '--type[the kind of way]:type:(recommended fastest shortest sightseeing economical thrilling)' \
    '--avoid[what to avoid, with commas]:roads:_values -s , road motorways tolls boat-ferries rail-ferries tunnels dirt-roads used-roads' \
    '--hilliness[hills of a thrilling way]:degree:(high normal low)' \
    '--windingness[bends of a thrilling way]:degree:(high normal low)' \
    '--tractor[the truck is a tractor]' \
    '--roads[the road databases of this machine]' \
    '(: -)--providers[list the services: what they can do and what they still lack]' \
    '--provider[the service that answers]:name:_corvanemap_providers' \
    '--find[look for an address or a place]:text:' \
    '--near[with --find: around this position]:position:' \
    '--radius[with --near: within this distance]:metres:' \
    '--locate[the address at a position]:position:' \
    '--elevation[the elevation at a position]:position:' \
    '--panorama[the nearest panorama]:position:' \
    '--country=-[the country at a position, of a code, or of this machine]::where:' \
    '--offline[ask no service that is not on this machine]' \
    '--force[replace any file, also the source when something is lost]' \
    '--no-sync[do not wait until files have reached the disk]' \
    '--check[tell what the target cannot hold, without keeping it]' \
    '(--tolerant)--strict[exit with status 3 when anything was lost]' \
    '(--strict)--tolerant[exit with status 0 whatever was lost]' \
    '--fit[adapt the itinerary to what the target can hold]' \
    '--encoding[the encoding of 8-bit texts]:name:(utf-8 windows-1250 windows-1251 windows-1252 windows-1253 iso-8859-2 iso-8859-7 iso-8859-15 shift_jis)' \
    '--quiet[print errors only]' \
    '--csv-read[how the columns of a CSV file are read]:layout:_corvanemap_layouts_to_read' \
    '--csv-write[how the columns of a CSV file are written]:layout:_corvanemap_presets' \
    '--remember[keep the given CSV layouts]' \
    '--send[hand an itinerary to a companion program]:target:(tomtom-home navigon-fresh navgate mio-more garmin)' \
    '--point[with --send, only this stop, from 1]:number:' \
    '(: -)--settings[list the settings]' \
    '*--set[change a setting]:key=value:_corvanemap_settings' \
    '(: -)--formats[list the formats]' \
    '--inspect[show what a file holds]' \
    '--summary[with --inspect: one line a list]' \
    '--json[print as JSON]' \
    '(: -)'{-h,--help}'[show the help]' \
    '(: -)--version[show the version]' \
    '1:source:_files' \
    '*: :_corvanemap_further'
}

_corvanemap "$@"
