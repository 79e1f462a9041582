# Completion of cephtool in fish. The program itself says what fits.
function __cephtool
    set -l words (commandline -opc)
    set -l begun (commandline -ct)
    set -l option (string match -r -- '^--[^=]+=' $begun; or echo)
    set -l value (string replace -- "$option" '' $begun)
    for line in (command $words[1] complete $words[2..] "$begun" 2>/dev/null)
        switch $line
            case ':folders'
                __fish_complete_directories $value
            case ':files*'
                set -l endings (string split -n ' ' (string replace ':files' '' -- $line))
                set -l fitting '(/|'(string escape --style=regex -- $endings | string join '|')')$'
                for path in (__fish_complete_path $value '' | string trim -r)
                    string match -rq -- $fitting $path; and echo $option$path
                end
            case '*'
                echo $option$line
        end
    end
end
complete -c cephtool -f -a '(__cephtool)'
