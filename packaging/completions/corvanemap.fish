# fish completion for corvanemap. The keys come from the program itself, which lists them in a few
# milliseconds, so that they are always those of the program at hand.

# The keys that can be read or written, each with its label.
function __corvanemap_keys
    set -l program (commandline -opc)[1]
    env LC_ALL=C $program --formats 2>/dev/null |
        string match -r "^\S+ +(?:read and write|$argv[1]) .*" |
        string replace -r '^(\S+) +(?:read and write|read|write) +(.*)$' '$1\t$2'
end

# Succeeds when this many tokens stand in front of the word that is completed.
function __corvanemap_tokens
    set -l count 0
    set -l skip 0
    for word in (commandline -opc)[2..]
        if test $skip = 1
            set skip 0
            continue
        end
        switch $word
            case -o --output --list --from --split --option --simplify --provider --find --near --radius \
                --locate --elevation --panorama --csv-read --csv-write --set --way --mode --type \
                --avoid --hilliness --windingness --send --point
                set skip 1
            case '-*' '*LANG_*'
            case '*'
                set count (math $count + 1)
        end
    end
    test $count -eq $argv[1]
end

# The presets of CSV layouts, which the program names to whoever gives none that it knows.
function __corvanemap_presets
    set -l program (commandline -opc)[1]
    env LC_ALL=C $program --csv-read "?" 2>&1 |
        string match -r 'one of: (.*)' -g | string split ', '
end

# The settings that can be changed.
function __corvanemap_settings
    set -l program (commandline -opc)[1]
    env LC_ALL=C $program --settings 2>/dev/null |
        string match -rv '^\S+ +bytes' | string replace -r '^(\S+) .*' '$1='
end

function __corvanemap_providers
    set -l program (commandline -opc)[1]
    env LC_ALL=C $program --providers 2>/dev/null | string match -r '^.{5}(\S+) ' -g
end

complete -c corvanemap -n 'not __corvanemap_tokens 0; and not __fish_contains_opt inspect' \
    -a '(__corvanemap_keys write)'
complete -c corvanemap -n '__corvanemap_tokens 2; and not __fish_contains_opt inspect' \
    -a 'LANG_ENGLISH LANG_FRENCH LANG_GERMAN LANG_DUTCH'
complete -c corvanemap -s o -l output -r -F -d 'Write to this file or folder'
complete -c corvanemap -l merge -d 'Put all sources into one itinerary'
complete -c corvanemap -l recursive -d 'Convert the folders below a folder too'
complete -c corvanemap -l from -x -a '(__corvanemap_keys read)' -d 'Read the source as this format'
complete -c corvanemap -l list -x -a 'all routes tracks waypoints pois' \
    -d 'Which lists become the itinerary'
complete -c corvanemap -l split -x -d 'The most points in one file'
complete -c corvanemap -l option -x -a 'no-commas via-points explorist hand-off' \
    -d 'The option of a format as a word'
complete -c corvanemap -l reverse -d 'Turn the itinerary round'
complete -c corvanemap -l sort -d 'Sort the stops by their names'
complete -c corvanemap -l unique -d 'Keep one of the stops at the same place'
complete -c corvanemap -l simplify -x -d 'Leave out points beside the line of the others'
complete -c corvanemap -l optimize -d 'Order the stops so that the way becomes shorter'
complete -c corvanemap -l way -r -F -d 'Print the way along the stops of a file'
complete -c corvanemap -l directions -d 'Ask for the way to each stop before writing'
complete -c corvanemap -l as-track -d 'With --directions: write the way itself as a track'
complete -c corvanemap -l with-way -d 'With --directions: write the stops with the way between them'
complete -c corvanemap -l mode -x -a 'car truck pedestrian bicycle motorcycle van bus' -d 'The vehicle'
complete -c corvanemap -l type -x \
    -a 'recommended fastest shortest sightseeing economical thrilling' -d 'The kind of way'
complete -c corvanemap -l avoid -x \
    -a 'motorways tolls boat-ferries rail-ferries tunnels dirt-roads used-roads' -d 'What to avoid'
complete -c corvanemap -l hilliness -x -a 'high normal low' -d 'Hills of a thrilling way'
complete -c corvanemap -l windingness -x -a 'high normal low' -d 'Bends of a thrilling way'
complete -c corvanemap -l tractor -d 'The truck is a tractor'
complete -c corvanemap -l roads -d 'The road databases of this machine: add, list or remove'
complete -c corvanemap -l providers -d 'List the services: what they can do and what they still lack'
complete -c corvanemap -l provider -x -a '(__corvanemap_providers)' -d 'The service that answers'
complete -c corvanemap -l find -x -d 'Look for an address or a place'
complete -c corvanemap -l near -x -d 'With --find: around this position'
complete -c corvanemap -l radius -x -d 'With --near: within this distance'
complete -c corvanemap -l locate -x -d 'The address at a position'
complete -c corvanemap -l elevation -x -d 'The elevation at a position'
complete -c corvanemap -l panorama -x -d 'The nearest panorama'
complete -c corvanemap -l country -d 'The country at a position, of a code, or of this machine'
complete -c corvanemap -l offline -d 'Ask no service that is not on this machine'
complete -c corvanemap -l force -d 'Replace any file'
complete -c corvanemap -l no-sync -d 'Do not wait until files have reached the disk'
complete -c corvanemap -l check -d 'Tell what the target cannot hold'
complete -c corvanemap -l strict -d 'Exit with status 3 when anything was lost'
complete -c corvanemap -l tolerant -d 'Exit with status 0 whatever was lost'
complete -c corvanemap -l fit -d 'Adapt the itinerary to what the target can hold'
complete -c corvanemap -l encoding -x -d 'The encoding of 8-bit texts' \
    -a 'utf-8 windows-1250 windows-1251 windows-1252 windows-1253 iso-8859-2 iso-8859-7 iso-8859-15 shift_jis'
complete -c corvanemap -l quiet -d 'Print errors only'
complete -c corvanemap -l csv-read -x -a 'auto (__corvanemap_presets)' -d 'How the columns of a CSV file are read'
complete -c corvanemap -l csv-write -x -a '(__corvanemap_presets)' -d 'How the columns of a CSV file are written'
complete -c corvanemap -l remember -d 'Keep the given CSV layouts'
complete -c corvanemap -l send -x -a 'tomtom-home navigon-fresh navgate mio-more garmin' -d 'Hand an itinerary to a companion program'
complete -c corvanemap -l point -x -d 'With --send: only this stop, from 1'
complete -c corvanemap -l settings -d 'List the settings'
complete -c corvanemap -l set -x -a '(__corvanemap_settings)' -d 'Change a setting'
complete -c corvanemap -l formats -d 'List the formats'
complete -c corvanemap -l inspect -d 'Show what a file holds'
complete -c corvanemap -l summary -d 'With --inspect: one line a list'
complete -c corvanemap -l json -d 'Print as JSON'
complete -c corvanemap -s h -l help -d 'Show the help'
complete -c corvanemap -l version -d 'Show the version'
