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
    '(--tolerant)--strict[exit with status 3 when anything was lost]' \
    '(--strict)--tolerant[exit with status 0 whatever was lost]' \
    '--fit[adapt the itinerary to what the target can hold]' \
    '--encoding[the encoding of 8-bit texts]:name:(utf-8 windows-1250 windows-1251 windows-1252 windows-1253 iso-8859-2 iso-8859-7 iso-8859-15 shift_jis)' \
    '--quiet[print errors only]' \
    '--csv-read[how the columns of a CSV file are read]:layout:(auto Default Inforad Destinator)' \
    '--csv-write[how the columns of a CSV file are written]:layout:' \
    '--remember[keep the given CSV layouts]' \
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
