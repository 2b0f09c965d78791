#compdef corvanemap
# zsh completion for corvanemap. The keys come from the program itself, which lists them in a few
# milliseconds, so that they are always those of the program at hand.

_corvanemap_keys() {
  local line key ability label
  local -a keys
  # Key, ability and label stand in columns, two blanks apart.
  for line in ${(f)"$(LC_ALL=C _call_program keys $words[1] --formats 2>/dev/null)"}; do
    key=${line%% *}
    ability=${${line#$key}##[[:space:]]#}
    label=${ability##*  }
    [[ $ability == (write|read and write)\ * ]] && keys+=("${key//:/\\:}:$label")
  done
  _describe -t keys 'format to write' keys
}

_corvanemap() {
  emulate -L zsh -o extended_glob
  _arguments -s \
    '(-o --output)'{-o,--output}'[write to this file or folder]:target:_files' \
    '--list[which lists become the itinerary]:lists:(all routes tracks waypoints pois)' \
    "--split[the writer's option, for itn the most points in one file]:number:" \
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
    '--force[order by road even with more than 500 requests]' \
    '--roads[the road databases of this machine]' \
    '(: -)--providers[list the services: what they can do and what they still lack]' \
    '--provider[the service that answers]:name:' \
    '--find[look for an address or a place]:text:' \
    '--near[with --find: around this position]:position:' \
    '--radius[with --near: within this distance]:metres:' \
    '--locate[the address at a position]:position:' \
    '--elevation[the elevation at a position]:position:' \
    '--panorama[the nearest panorama]:position:' \
    '--country=-[the country at a position, of a code, or of this machine]::where:' \
    '--offline[ask no service that is not on this machine]' \
    '--check[tell what the target cannot hold, without keeping it]' \
    '--strict[exit with status 3 when something was lost]' \
    '--quiet[print errors only]' \
    '--csv-read[how the columns of a CSV file are read]:layout:' \
    '--csv-write[how the columns of a CSV file are written]:layout:' \
    '--remember[keep the given CSV layouts]' \
    '--send[hand an itinerary to a companion program]:target:(tomtom-home navigon-fresh navgate mio-more garmin)' \
    '--point[with --send, only this stop, from 1]:number:' \
    '(: -)--settings[list the settings]' \
    '*--set[change a setting]:key=value:' \
    '(: -)--formats[list the formats]' \
    '--inspect[show what a file holds]' \
    '--json[print as JSON]' \
    '(: -)'{-h,--help}'[show the help]' \
    '(: -)--version[show the version]' \
    '1:source:_files' \
    '2:format:_corvanemap_keys' \
    '3:language:(LANG_ENGLISH LANG_FRENCH LANG_GERMAN LANG_DUTCH)'
}

_corvanemap "$@"
