# Completion of cephtool in fish. The program itself says what fits.
function __cephtool
    set -l words (commandline -opc)
    set -l begun (commandline -ct)
    set -l option (string match -r -- '^--[^=]+=' $begun)
    for line in (command $words[1] complete $words[2..] "$begun" 2>/dev/null)
        switch $line
            case ':folders'
                __fish_complete_directories (string replace -- "$option" '' $begun)
            case ':files*'
                for ending in (string split -n ' ' (string replace ':files' '' -- $line))
                    __fish_complete_suffix --complete=(string replace -- "$option" '' $begun) $ending
                end
            case '*'
                echo $option$line
        end
    end
end
complete -c cephtool -f -a '(__cephtool)'
