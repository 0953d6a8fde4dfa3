#include "engine/embedded/words/LanguageData.h"

namespace vorq::gateway {

constexpr LanguageData kPortuguese{
    .locale = "pt",
    .stemmer = "portuguese",
    .stopWords =

        "a ainda algum alguma alguns ao aos apenas após aquela aquele aqui as assim até cada com "
        "como contra da das de dela dele delas deles depois desde dessa desse desta deste do "
        "dois dos duas durante e ela elas ele eles em enquanto então entre era eram essa essas "
        "esse esses esta estas está estão estava este estes eu foi foram há isso isto já lá lhe "
        "lhes lo mais mas me mesma mesmo meu meus minha minhas muita muito muitos muitas na nas "
        "nem nesta neste no nos nossa nossas nosso nossos num numa não nós o onde os ou outra "
        "outras outro outros para pela pelas pelo pelos por porque pois pouco qual quais quando "
        "quanta quantas quanto quantos que quem se sejam seja sem sendo ser será serão seu seus "
        "si sido só sob sobre sua suas são também tão te tem têm temos teu teve todas todo todos "
        "tu tua tudo um uma umas uns vai vão você vocês à às é posso pode podem podemos poderia "
        "poderiam pôde devo deve devem devemos deveria tenho fica ficam ficar ficou estar quero "
        "quer",
    .calendar = "janeiro fevereiro março abril maio junho julho agosto setembro outubro novembro "
                "dezembro segunda terça quarta quinta sexta sábado domingo segunda-feira "
                "terça-feira quarta-feira quinta-feira sexta-feira primavera verão outono inverno",
    .determiners = "o a os as um uma uns umas do da dos das no na nos nas ao à aos às de pelo pela "
                   "este esta esse essa seu sua seus suas meu minha nosso nossa cada algum alguma",
    .prepositions = "em com sem para por sobre entre numa num",
    .paleWords =

        "tenho sei sabe vejo vê dou dá põe ponho acho acha quero quer chega chego deixa deixei "
        "custa custou ano anos dia dias semana semanas mês meses hora horas minuto minutos vez "
        "vezes coisa coisas parte exemplo modo tempo terço metade feito fazer faz fez diz dito "
        "dizer disse três quatro cinco seis sete oito nove dez doze quinze vinte cem mil milhão "
        "olá obrigado obrigada gente favor vem passa primeiro primeira último última novo nova "
        "grande pequeno pequenos bom boa melhor sempre nunca ontem amanhã hoje pode podem posso "
        "poder precisa precisam ficam fica abraço naquele pessoal agora manhã tarde noite partir "
        "saiu lindo começa alguém dona seu sr sra senhor senhora dentro cima baixo fora frente "
        "trás meio ver antigo antiga velho velha duzentos trezentos quinhentos",
    .verbEndings = "mente ava avam ando endo indo ar er ir aram eram iram ou iu",
    .abbreviations = "sr sra srta dr dra prof profa etc ex art núm n tel pág págs vol cap av r eng "
                     "aprox máx mín p.ex jan fev mar abr jun jul ago set out nov dez",
    .pronouns = "ele ela eles elas isso isto este esta esse essa mas e assim também além então lá "
                "seu sua seus suas dela dele naquele",
    .personal = "ele ela eles elas lhe lhes o a os as seu sua seus suas dele dela deles delas se",
    .dropsSubjects = true,
    .placePrepositions = "em no na de do da para até",
    .forms = "ir vai vão foi foram ia ido|ser é era foi|vir vem veio vieram vindo venha venham|"
             "ter tem tinha teve tido tenha tenham|fazer faz fez fizeram feito faça façam|dizer "
             "diz disse disseram dito diga digam|pôr põe pôs posto ponha ponham|poder pode pôde "
             "podia|querer quer quis queria|saber sabe soube sabia|estar está esteve estava|dar "
             "dá deu deram dado dê deem|ver vê viu visto veja vejam|trazer traz trouxe trouxeram "
             "trazido traga tragam|pedir pede pediu pedido|seguir segue seguiu|dormir dorme "
             "dormiu|morrer morre morreu morto morte|servir serve serviu|sentir sente sentiu|"
             "pensar pensa pensou|começar começa começou começo|fechar fecha fechou fechado|abrir "
             "abre abriu aberto abertura|voltar volta voltou|quebrar quebra quebrou|escrever "
             "escreve escreveu escrito|encontrar encontra encontrou|perder perde perdeu perda|"
             "custar custa custou custo|jogar joga jogou jogo|chegar chega chegou chegada|sair "
             "sai saiu saída|cair cai caiu queda|ler lê leu|ouvir ouve ouviu|crer crê|construir "
             "constrói construiu construção|escolher escolhe escolheu escolha|devolver devolve "
             "devolveu|nascer nasce nasceu nascimento|comprar compra comprou|pagar paga pagou "
             "pagamento|vender vende vendeu venda|decidir decide decidiu decisão|viver vive viveu "
             "vida|ficar fica ficou|ganhar ganha ganhou ganho|achar acha achou",
    .synonyms =
        "começar iniciar|acabar terminar finalizar|comprar adquirir|custar preço valor taxa|"
        "receber obter ganhar|trabalho emprego profissão|chefe diretor responsável|médico "
        "doutor|criança menino|carro auto veículo|ligar telefonar chamar|avisar informar "
        "comunicar|notar descobrir perceber|grande enorme|zangado furioso bravo|contente "
        "feliz|triste|doente|alugar aluguel|contrato acordo|cancelar anular|permitir "
        "autorizar|proibir proibido|precisar necessário|quebrar danificar|reparar consertar "
        "arrumar|bolsa mochila mala|cachorro gato animal|foto imagem|casa moradia|morar "
        "viver residir|enviar mandar|dar entregar|loja comércio|rua avenida|responder "
        "contestar|pedir solicitar|procurar buscar|pôr colocar jogar botar|machucar ferir|"
        "salvar resgatar|viagem trajeto|rápido veloz|escolher eleger|guardar conservar|"
        "reunião sessão|acontecer ocorrer|baixar diminuir|subir aumentar|funcionário "
        "empregado|dinheiro|erro falha|presente|razão causa motivo|ajudar|falar|achar "
        "encontrar|estar ficar|demorar durar tempo",
    .greetings = "olá|oi|prezado|prezada|prezados|caro|cara|caros|querido|bom dia|boa tarde",
    .closings = "um abraço|abraços|atenciosamente|cordialmente|obrigado|obrigada|muito obrigado|"
                "cumprimentos|saudações|beijos|att",
    .requestWords = "explica explique explicar mostra mostre dê diz texto passagem lista liste "
                    "frase frases ponto pontos linha linhas documento artigo descreva significa "
                    "datas data números resuma resumo ajuda entender",
    .definitions = "é um=>O que é {}?|é uma=>O que é {}?|é o=>O que é {}?|é a=>O que é "
                   "{}?|significa=>O que significa {}?",
    .question =
        {.person = "quem|de quem|a quem|com quem|por quem|para quem|qual pessoa",
         .place =
             "onde|aonde|de onde|por onde|em que lugar|em qual lugar|em que sala|em que cidade",
         .time = "quando|desde quando|até quando|a que horas|que horas|que dia|qual dia|em que ano|"
                 "qual data|que data|datas|data",
         .quantity =
             "quanto|quanta|quantos|quantas|de quanto|qual o preço|qual é o preço|qual o "
             "valor|que quantidade|que idade|qual a idade|que porcentagem|a que temperatura",
         .reason = "por que|por quê|porque|qual o motivo|por qual motivo|por que razão|motivo",
         .definition = "o que é|o que são|o que significa|que é",
         .permission = "posso|pode|podemos|é permitido|se pode|é possível|preciso|devo|há|tem|é",
         .profession = "profissão|ofício|faz da vida|trabalha como",
         .other = "o que|que|qual|quais|como",
         .money = "custa|custam|custou|preço|valor|pagar|dinheiro|taxa|multa|caro|cota",
         .duration = "quanto tempo|quanto dura|que idade|quantos anos",
         .length = "distância|altura|comprimento|profundidade|quanto mede",
         .frequency = "quantas vezes|com que frequência"},
    .answer =
        {.person = "sr|sra|senhor|senhora|dona|doutor|doutora|dr|dra|diretor|diretora|presidente|"
                   "prefeito|prefeita|chefe|professor|professora|pesquisador|"
                   "pesquisadora|segundo|disse",
         .firstPerson = "eu|me|nós|meu|minha",
         .place =

             "no|na|nos|nas|numa|num|perto|perto do|dentro|ao lado|atrás|junto|em frente|rua|"
             "praça|sala|cidade|prédio|ficam|fica|em um|em uma|em seu|em sua|dentro de|dentro do|"
             "dentro da|fora|debaixo|embaixo|em cima|acima|abaixo|de frente|entre|no fundo|"
             "à beira|lá|sob a|sob o|contra a|debaixo da|debaixo do",
         .time = "hora|horas|h|hoje|amanhã|ontem|manhã|tarde|noite|meio-dia|século|desde|até|antes|"
                 "depois|durante|cada|às|dia|a partir|amanhecer|anoitecer|meia-noite|seguinte|cedo|"
                 "logo|madrugada",
         .reason = "porque|por causa|devido a|graças a|já que|uma vez que|visto que|em razão",
         .weakReason = "pois|como|para|por isso|portanto",
         .definition =

             "é um|é uma|é o|é a|significa|são|chama-se|consiste|era um|era uma|era o|era a|"
             "foi um|foi uma|tinha sido|trabalhava como|trabalha como",
         .negation = "não|nunca|jamais|nenhum|nenhuma|ninguém|nada|proibido|proibida|sem|nem",
         .permission = "permitido|permitida|proibido|proibida|pode|podem|sim|não|deve|devem|"
                       "precisam",
         .numbers = "dois|duas|três|quatro|cinco|seis|sete|oito|nove|dez|onze|doze|treze|quatorze|"
                    "quinze|vinte|trinta|quarenta|cinquenta|cem|cento|mil|milhão|milhões|metade|"
                    "terço|quarto|dúzia|dobro|grátis",
         .money = "real|reais|r$|centavo|centavos|euro|euros|dólares|grátis|gratuito",
         .duration = "segundo|segundos|minuto|minutos|hora|horas|dia|dias|semana|semanas|mês|meses|"
                     "ano|anos",
         .length = "metro|metros|quilômetro|quilômetros|km|cm|mm|centímetros",
         .frequency = "vez|vezes|cada|todos os|todas as|diariamente"},
    .phrases = {.keySentences = "**Frases principais**",
                .keyTerms = "**Termos principais**",
                .textSays = "O texto diz:",
                .foundNothing =
                    "Não encontrei nenhuma frase sobre isso no texto. Estas são as que mais dizem:",
                .dates = "O texto dá estas datas:",
                .numbers = "O texto dá estes números:",
                .ownWordsNote =
                    "*Estas frases foram tiradas do texto tal como estão; nenhum modelo de "
                    "linguagem está conectado.*",
                .deeper = "Mais sobre isso, da nossa conversa:",
                .fromConversation = "Da nossa conversa:",
                .lookUp = "O que você quer procurar nele?",
                .about = "O que o texto diz sobre “{}”?",
                .summarize = "Resuma o texto em três frases",
                .conjunction = " e ",
                .separator = ", ",
                .gapQuestion = "Que palavra falta na lacuna?",
                .explanation = "O texto diz: “{}”",
                .primer =
                    "{} perguntas sobre o seu texto. Cada uma omite uma palavra de uma das frases; "
                    "escolha a palavra que falta.",
                .toBegin = "Para começar: {}"},
};

} // namespace vorq::gateway
